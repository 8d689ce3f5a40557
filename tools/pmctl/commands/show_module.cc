// SPDX-License-Identifier: Apache-2.0
#include "commands/show_module.h"

#include "command_line/argument_check.h"
#include "commands/asked_ports.h"
#include "output/column_table.h"
#include "output/json_text.h"
#include "output/port_members.h"
#include "switch/switch_client.h"

namespace pmctl {

command_result run_show_module(const arguments &given) {
    command_result result;
    std::vector<pm_port_info_t> ports;
    attempt(result.failures, [&] { ports = switch_client().ports_of_module(parse_module(given.word("N"))); });
    const record_list list = records_of(std::span<const pm_port_info_t>(ports));
    if (given.has("--json"))
        result.output.text = json_text("interfaces", port_groups(), list);
    else
        result.output.sheets.push_back(column_sheet(port_columns(), list));
    return result;
}

}  // namespace pmctl
