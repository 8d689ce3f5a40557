// SPDX-License-Identifier: Apache-2.0
// Everything of the C++ layer, in a program that has neither exceptions nor run-time type information: asks the switch
// and prints a line for each thing that it learnt.
#include <poll.h>

#include <chrono>
#include <cstdio>

#include "platform_dev/mts_handle.hpp"
#include "port_mgr/port_manager.hpp"

#if defined(__cpp_exceptions) || defined(__cpp_rtti)
#error "this is to be compiled without"
#endif

namespace {

using namespace port_mgr;

constexpr auto limit = std::chrono::seconds(60);
constexpr uint16_t vsan = 77;

template <typename Record>
void print(const char *what, const result<records<Record>> &told) {
    if (told)
        std::printf("%s: %zu\n", what, told->size());
    else
        std::printf("%s: %s\n", what, told.why().words().c_str());
}

void ask(mts_handle_t handle, ranges two) {
    print("get_port_info", get_port_info(handle, two));
    print("get_port_info_range", get_port_info_range(handle, two[0].first, two[0].last));
    print("get_port_info_brief", get_port_info_brief(handle, two));
    print("get_all_port_info_brief", get_all_port_info_brief(handle));
    print("get_next_port_info", get_next_port_info(handle, two[0].first));
    print("get_port_config", get_port_config(handle, two));
    print("get_module_interface_listing", get_module_interface_listing(handle, 1, two[0].first));
    print("get_fcot_info", get_fcot_info(handle, two));
    print("get_fcot_info_with_ddm", get_fcot_info_with_ddm(handle, two));
    print("nothing", get_port_info_range(handle, 0x01f00000, 0x01f00000));
}

void change(mts_handle_t handle, ranges two) {
    const change_outcome made = set_port_config(handle, two, PM_ATTR_PORT_VSAN, bytes_of(vsan), {.user = "bare"});
    std::printf("set_port_config: %s", made.request.words().c_str());
    for (const pm_set_port_result_t &entry : made.entries) std::printf(", %s", status_of(entry).words().c_str());
    std::puts("");
}

void go_through(mts_handle_t handle) {
    size_t count = 0;
    size_t changed = 0;
    auto ports = all_ports(handle);
    for (const pm_port_info_t &port : ports) {
        ++count;
        if (port.port_vsan == vsan) ++changed;
    }
    std::printf("all_ports: %zu, %zu changed: %s\n", count, changed, ports.why().words().c_str());
}

void ask_at_once(const platform_dev::mts_handle &handle, ranges two) {
    async_requests requests(handle.get());
    size_t ports = 0;
    const auto add = [&](const auto &told) { ports += told ? told->size() : 0; };
    const auto cancelled = requests.get_next_port_info(0, limit, add);
    const bool all_sent = requests.get_port_info(two, limit, add) && requests.get_port_info_brief(two, limit, add) &&
                          requests.get_port_info_range(two[0], limit, add) &&
                          requests.get_all_port_info_brief(limit, add) && requests.get_next_port_info(0, limit, add);
    const bool is_cancelled = cancelled && requests.cancel(*cancelled);
    const size_t under_way = requests.under_way();
    while (requests.under_way() > 0) {
        pollfd waited{handle.descriptor(), POLLIN, 0};
        poll(&waited, 1, requests.poll_timeout());
        requests.process();
    }
    std::printf("async_requests: %s, %s, %zu under way, %zu ports\n", all_sent ? "sent" : "not sent",
                is_cancelled ? "one cancelled" : "none cancelled", under_way, ports);
}

}  // namespace

int main() {
    const platform_dev::mts_handle handle;
    auto first_of_all = get_next_port_info(handle.get(), 0);
    if (!first_of_all) return 1;
    const records<pm_port_info_t> first = *std::move(first_of_all);
    const auto second = get_next_port_info(handle.get(), first[0].if_index);
    if (!second) return 1;
    const pm_if_index_range_t two[] = {{first[0].if_index, first[0].if_index},
                                       {(*second)[0].if_index, (*second)[0].if_index}};
    ask(handle.get(), two);
    change(handle.get(), two);
    go_through(handle.get());
    ask_at_once(handle, two);
    return 0;
}
