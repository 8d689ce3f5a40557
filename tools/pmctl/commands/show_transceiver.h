// SPDX-License-Identifier: Apache-2.0
// show interface transceiver: what is plugged into ports, and how it does.
#ifndef PMCTL_COMMANDS_SHOW_TRANSCEIVER_H
#define PMCTL_COMMANDS_SHOW_TRANSCEIVER_H

#include "command.h"

namespace pmctl {

command_result run_show_transceiver(const arguments &given);

// Readings are the line cards' where they tell them.
command_result run_show_transceiver_details(const arguments &given);

}  // namespace pmctl

#endif
