// SPDX-License-Identifier: Apache-2.0
// Lists every port of the switch, as list_ports.c does: the shortest complete client in C++.
#include <platform_dev/mts_handle.hpp>
#include <port_mgr/port_manager.hpp>

#include <array>
#include <cstdio>

namespace {

void print(const pm_port_info_t &port) {
    std::array<char, 80> speed{};
    std::printf("%-20s %-10s %-10s %s\n", port_mgr::interface_name(port.if_index).c_str(),
                port_state_string(port.oper_state), port_speed_string(port.oper_speed, speed.data()),
                port_state_reason_string(port.state_reason, 0));
}

}  // namespace

int main() {
    const platform_dev::mts_handle handle;
    if (!handle) {
        std::perror("list_ports: mts_dev_open");
        return 1;
    }
    auto ports = port_mgr::all_ports(handle.get());
    for (const pm_port_info_t &port : ports) print(port);
    if (!ports.why().ok()) {
        std::fprintf(stderr, "list_ports: %s\n", ports.why().words().c_str());
        return 1;
    }
    return 0;
}
