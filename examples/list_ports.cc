// SPDX-License-Identifier: Apache-2.0
// Lists every port of the switch, as list_ports.c does: the shortest complete client in C++.
#include <platform/if_index.h>
#include <platform_dev/mts_handle.hpp>
#include <port_mgr/port_manager.hpp>

#include <array>
#include <cstdio>

namespace {

void print(const pm_port_info_t &port) {
    std::array<char, 256> name{};
    std::array<char, 80> speed{};
    sprintf_if_index(name.data(), port.if_index);
    std::printf("%-20s %-10s %-10s %s\n", name.data(), port_state_string(port.oper_state),
                port_speed_string(port.oper_speed, speed.data()), port_state_reason_string(port.state_reason, 0));
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
