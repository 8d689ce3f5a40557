// SPDX-License-Identifier: Apache-2.0
// show interface counters, clear counters: what line cards count of Ethernet-like ports and FCIP tunnels.
#ifndef PMCTL_COMMANDS_SHOW_COUNTERS_H
#define PMCTL_COMMANDS_SHOW_COUNTERS_H

#include "command.h"

namespace pmctl {

command_result run_show_counters(const arguments &given);

// The same again and again, with rates.
command_function watched_counters();

command_result run_clear_counters(const arguments &given);

}  // namespace pmctl

#endif
