// SPDX-License-Identifier: Apache-2.0
#include "commands/show_interface.h"

#include "failure.h"
#include "output/column_table.h"
#include "output/json_text.h"
#include "output/member_list.h"
#include "output/port_members.h"
#include "switch_client.h"

namespace pmctl {
namespace {

std::vector<interface_range> named_ranges(const arguments &given) {
    std::vector<interface_range> all;
    for (const std::string &word : given.words("NAME"))
        for (interface_range &range : parse_interface_ranges(word)) all.push_back(std::move(range));
    if (given.has("--all") && !all.empty()) throw usage_error("--all and interface names exclude each other");
    return all;
}

void append(std::vector<pm_port_info_t> &ports, const record_array<pm_port_info_t> &more) {
    ports.insert(ports.end(), more.all().begin(), more.all().end());
}

// What is found of the ranges goes to `ports`; returns what was refused. Once the switch does not answer, the ranges
// after it are not asked for.
std::vector<std::string> collect(const std::vector<interface_range> &ranges, std::vector<pm_port_info_t> &ports) {
    std::vector<std::string> failures;
    switch_client client;
    for (const interface_range &range : ranges) try {
            append(ports, client.ports(range));
        } catch (const query_refused &refusal) {
            failures.emplace_back(refusal.what());
        } catch (const switch_unavailable &reason) {
            if (ports.empty()) throw;
            failures.emplace_back(reason.what());
            break;
        }
    return failures;
}

}  // namespace

command_result run_show_interface(const arguments &given) {
    command_result result;
    std::vector<pm_port_info_t> ports;
    if (const auto ranges = named_ranges(given); ranges.empty())
        append(ports, switch_client().ports());
    else
        result.failures = collect(ranges, ports);
    const record_list list = records_of(std::span<const pm_port_info_t>(ports));
    result.output =
        given.has("--json") ? json_text("interfaces", port_groups(), list) : member_lists(port_groups(), list);
    return result;
}

command_result run_show_interface_brief(const arguments &given) {
    const auto ports = switch_client().brief_ports();
    const record_list list = records_of(ports.all());
    return {given.has("--json") ? json_text("interfaces", brief_groups(), list) : column_table(brief_columns(), list),
            {}};
}

}  // namespace pmctl
