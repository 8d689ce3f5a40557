// SPDX-License-Identifier: Apache-2.0
#include "channel_health.hpp"

#include <algorithm>

port_mgr::result<std::vector<if_index_t>> members_down(mts_handle_t handle, if_index_t channel) {
    constexpr uint8_t down = 2;
    const auto ports = port_mgr::get_all_port_info_brief(handle);
    if (!ports) return ports.why();
    std::vector<if_index_t> found;
    for (const pm_port_info_brief_t &port : *ports)
        if (port.parent_if_index == channel && port.oper_state == down) found.push_back(port.if_index);
    std::sort(found.begin(), found.end());
    return found;
}
