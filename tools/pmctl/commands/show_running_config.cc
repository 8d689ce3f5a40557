// SPDX-License-Identifier: Apache-2.0
#include "commands/show_running_config.h"

#include "commands/asked_ports.h"
#include "output/command_lines.h"

namespace pmctl {

command_result run_show_running_config(const arguments &given) {
    command_result result;
    for (const pm_port_info_t &port : asked_ports(named_ranges(given), result.failures)) {
        if (!result.output.text.empty()) result.output.text += "\n";
        result.output.text += command_lines(port);
    }
    return result;
}

}  // namespace pmctl
