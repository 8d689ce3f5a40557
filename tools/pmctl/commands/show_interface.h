// SPDX-License-Identifier: Apache-2.0
// show interface: the ports of the switch, in full or one line each.
#ifndef PMCTL_COMMANDS_SHOW_INTERFACE_H
#define PMCTL_COMMANDS_SHOW_INTERFACE_H

#include "command.h"

namespace pmctl {

command_result run_show_interface(const arguments &given);
command_result run_show_interface_brief(const arguments &given);

}  // namespace pmctl

#endif
