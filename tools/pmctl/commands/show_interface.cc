// SPDX-License-Identifier: Apache-2.0
#include "commands/show_interface.h"

#include "commands/asked_ports.h"
#include "output/column_table.h"
#include "output/json_text.h"
#include "output/member_list.h"
#include "output/port_members.h"
#include "switch/switch_client.h"

namespace pmctl {

command_result run_show_interface(const arguments &given) {
    command_result result;
    const std::vector<pm_port_info_t> ports = asked_ports(named_ranges(given), result.failures);
    const record_list list = records_of(std::span(ports));
    if (given.has("--json"))
        result.output.text = json_text("interfaces", port_groups(), list);
    else
        result.output.sheets = member_sheets(port_groups(), list);
    return result;
}

command_result run_show_interface_brief(const arguments &given) {
    command_result result;
    port_mgr::records<pm_port_info_brief_t> ports;
    attempt(result.failures, [&] { ports = switch_client().brief_ports(); });
    const record_list list = records_of(ports.all());
    if (given.has("--json"))
        result.output.text = json_text("interfaces", brief_groups(), list);
    else
        result.output.sheets.push_back(column_sheet(brief_columns(), list));
    return result;
}

}  // namespace pmctl
