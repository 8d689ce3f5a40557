// SPDX-License-Identifier: Apache-2.0
#include "commands/asked_ports.h"

#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <set>

#include "command_line/interface_words.h"
#include "switch/switch_client.h"

namespace pmctl {

std::vector<interface_range> named_ranges(const arguments &given) {
    std::vector<interface_range> all = interfaces_named(given.words("NAME"));
    if (given.has("--all") && !all.empty()) throw usage_error("--all and interface names exclude each other");
    return all;
}

std::vector<if_index_t> existing_interfaces(const std::vector<interface_range> &ranges,
                                            std::vector<std::string> &failures) {
    const std::vector<if_index_t> all = switch_client().interfaces();
    if (ranges.empty()) return all;
    const std::set<if_index_t> existing(all.begin(), all.end());
    std::set<if_index_t> seen;
    std::vector<if_index_t> found;
    for (const interface_range &range : ranges) {
        bool is_empty = true;
        for (const if_index_t index : members_of({range})) {
            if (!existing.contains(index)) continue;
            is_empty = false;
            if (seen.insert(index).second) found.push_back(index);
        }
        if (is_empty) failures.push_back(fmt::format("no such interface: {}", range.text()));
    }
    return found;
}

std::vector<if_index_t> asked_interfaces(const arguments &given, bool (*belongs)(if_index_t),
                                         std::vector<std::string> &failures) {
    const std::vector<interface_range> ranges = named_ranges(given);
    std::vector<if_index_t> interfaces = existing_interfaces(ranges, failures);
    if (ranges.empty()) std::erase_if(interfaces, [belongs](if_index_t index) { return !belongs(index); });
    return interfaces;
}

std::vector<pm_port_info_t> asked_ports(const std::vector<interface_range> &ranges,
                                        std::vector<std::string> &failures) {
    std::vector<pm_port_info_t> ports;
    attempt(failures, [&] {
        switch_client client;
        if (ranges.empty()) ports = client.ports();
        for (const interface_range &range : ranges)
            if (!attempt(failures, [&] { std::ranges::copy(client.ports(range), std::back_inserter(ports)); })) break;
    });
    return ports;
}

}  // namespace pmctl
