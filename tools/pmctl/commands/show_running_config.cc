// SPDX-License-Identifier: Apache-2.0
#include "commands/show_running_config.h"

#include <algorithm>

#include "commands/asked_ports.h"
#include "output/command_lines.h"
#include "switch/configuration.h"
#include "switch/switch_client.h"

namespace pmctl {
namespace {

// Asks about each of several things.
template <typename Subjects>
std::vector<pm_port_info_t> configured(const Subjects &subjects, std::vector<std::string> &failures) {
    configuration of;
    std::vector<pm_port_info_t> ports;
    const auto ask = [&](const auto &subject) {
        const std::vector<pm_port_info_t> more = of.ports(subject);
        ports.insert(ports.end(), more.begin(), more.end());
    };
    for (const auto &each : subjects)
        if (!attempt(failures, [&] { ask(each); })) break;
    return ports;
}

// In the order of their indexes.
std::vector<pm_port_info_t> all_configured(std::vector<std::string> &failures) {
    std::vector<pm_port_info_t> ports = configured(owner_pages(switch_client().interfaces()), failures);
    std::stable_sort(ports.begin(), ports.end(), [](const pm_port_info_t &one, const pm_port_info_t &other) {
        return one.if_index < other.if_index;
    });
    return ports;
}

}  // namespace

command_result run_show_running_config(const arguments &given) {
    command_result result;
    const std::vector<interface_range> ranges = named_ranges(given);
    std::vector<pm_port_info_t> ports;
    attempt(result.failures,
            [&] { ports = ranges.empty() ? all_configured(result.failures) : configured(ranges, result.failures); });
    for (const pm_port_info_t &port : ports) {
        if (!result.output.text.empty()) result.output.text += "\n";
        result.output.text += command_lines(port);
    }
    return result;
}

}  // namespace pmctl
