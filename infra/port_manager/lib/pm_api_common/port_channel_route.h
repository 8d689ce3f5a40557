// SPDX-License-Identifier: Apache-2.0
// port_channel_route.h: reaches the owner of a port channel through one of its members.
#ifndef PM_API_COMMON_PORT_CHANNEL_ROUTE_H
#define PM_API_COMMON_PORT_CHANNEL_ROUTE_H

#include "platform/types.h"

namespace pm {

// What happens to an answer that comes with a failed query for a member.
enum class failed_answer { is_freed, is_left };

// The SAP for a request about `if_index`, which `sap` owns unless it is a port channel: then the membership service
// names a member, whose owner answers for the channel.
uint32_t route_through_member(mts_handle_t handle, if_index_t if_index, uint32_t sap, failed_answer then);

}  // namespace pm

#endif
