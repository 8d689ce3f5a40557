// SPDX-License-Identifier: Apache-2.0
#include "commands/show_host_interface.h"

#include <fmt/core.h>

#include "failure.h"
#include "output/counter_members.h"
#include "output/json_text.h"
#include "output/member_list.h"

namespace pmctl {

command_result run_show_host_interface(const arguments &given) {
    command_result result;
    const std::string name = given.word("NAME");
    host_interface found{};
    std::vector<host_interface> interfaces;
    if (pm_get_proc_net_dev_stats(name.c_str(), &found.stats) == 0) {
        name.copy(found.name, sizeof found.name - 1);
        interfaces.push_back(found);
    } else {
        result.failures.push_back(fmt::format("not in /proc/net/dev of this machine: {}", shown_word(name)));
    }
    const record_list list = records_of(std::span<const host_interface>(interfaces));
    if (given.has("--json"))
        result.output.text = json_text("interfaces", host_interface_groups(), list);
    else
        result.output.sheets = member_sheets(host_interface_groups(), list);
    return result;
}

}  // namespace pmctl
