/* SPDX-License-Identifier: Apache-2.0 */
/* How port channels are. */
#ifndef CHANNEL_HEALTH_HPP
#define CHANNEL_HEALTH_HPP

#include <port_mgr/port_manager.hpp>

#include <vector>

/* The members of a port channel that are down, in the order of their indexes; or why they cannot be told. */
port_mgr::result<std::vector<if_index_t>> members_down(mts_handle_t handle, if_index_t channel);

#endif
