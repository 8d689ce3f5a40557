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

// Runs a query and notes what went wrong. Returns false when asking on is of no use.
template <typename Query>
bool attempt(std::vector<std::string> &failures, const Query &query) {
    try {
        query();
        return true;
    } catch (const query_refused &refusal) {
        failures.emplace_back(refusal.what());
        return true;
    } catch (const switch_unavailable &reason) {
        failures.emplace_back(reason.what());
        return false;
    }
}

std::vector<pm_port_info_t> collect(const std::vector<interface_range> &ranges, std::vector<std::string> &failures) {
    std::vector<pm_port_info_t> ports;
    attempt(failures, [&] {
        switch_client client;
        if (ranges.empty()) append(ports, client.ports());
        for (const interface_range &range : ranges)
            if (!attempt(failures, [&] { append(ports, client.ports(range)); })) break;
    });
    return ports;
}

}  // namespace

command_result run_show_interface(const arguments &given) {
    command_result result;
    const std::vector<pm_port_info_t> ports = collect(named_ranges(given), result.failures);
    const record_list list = records_of(std::span(ports));
    if (given.has("--json"))
        result.output.text = json_text("interfaces", port_groups(), list);
    else
        result.output.sheets = member_sheets(port_groups(), list);
    return result;
}

command_result run_show_interface_brief(const arguments &given) {
    command_result result;
    record_array<pm_port_info_brief_t> ports;
    attempt(result.failures, [&] { ports = switch_client().brief_ports(); });
    const record_list list = records_of(ports.all());
    if (given.has("--json"))
        result.output.text = json_text("interfaces", brief_groups(), list);
    else
        result.output.sheets.push_back(column_sheet(brief_columns(), list));
    return result;
}

}  // namespace pmctl
