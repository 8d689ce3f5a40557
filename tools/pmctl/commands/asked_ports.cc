// SPDX-License-Identifier: Apache-2.0
#include "commands/asked_ports.h"

#include "command_line/interface_words.h"
#include "switch/switch_client.h"

namespace pmctl {
namespace {

template <typename Ports>
void append(std::vector<pm_port_info_t> &ports, const Ports &more) {
    ports.insert(ports.end(), more.begin(), more.end());
}

}  // namespace

std::vector<interface_range> named_ranges(const arguments &given) {
    std::vector<interface_range> all = interfaces_named(given.words("NAME"));
    if (given.has("--all") && !all.empty()) throw usage_error("--all and interface names exclude each other");
    return all;
}

std::vector<if_index_t> interfaces_of_switch() {
    std::vector<if_index_t> all;
    const auto ports = switch_client().brief_ports();
    for (const pm_port_info_brief_t &port : ports.all()) all.push_back(port.if_index);
    return all;
}

std::vector<pm_port_info_t> asked_ports(const std::vector<interface_range> &ranges,
                                        std::vector<std::string> &failures) {
    std::vector<pm_port_info_t> ports;
    attempt(failures, [&] {
        switch_client client;
        if (ranges.empty()) append(ports, client.ports().all());
        for (const interface_range &range : ranges)
            if (!attempt(failures, [&] { append(ports, client.ports(range)); })) break;
    });
    return ports;
}

}  // namespace pmctl
