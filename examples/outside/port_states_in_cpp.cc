// SPDX-License-Identifier: Apache-2.0
// Says of every interface of the switch which state it is in.
#include <cstdio>
#include <platform_dev/mts_handle.hpp>
#include <port_mgr/port_manager.hpp>

int main() {
    const platform_dev::mts_handle handle;
    if (!handle) {
        std::perror("port_states_in_cpp: no handle");
        return 1;
    }
    const auto ports = port_mgr::get_all_port_info_brief(handle.get());
    if (!ports) {
        std::fprintf(stderr, "port_states_in_cpp: %s\n", ports.why().words().c_str());
        return 1;
    }
    for (const pm_port_info_brief_t &port : *ports)
        std::printf("%s %s\n", port_mgr::interface_name(port.if_index).c_str(), port_state_string(port.oper_state));
    return 0;
}
