// SPDX-License-Identifier: Apache-2.0
// show interface index, show module resources: what the switch has.
#ifndef PMCTL_COMMANDS_SHOW_INVENTORY_H
#define PMCTL_COMMANDS_SHOW_INVENTORY_H

#include "command.h"

namespace pmctl {

command_result run_show_index(const arguments &given);
command_result run_show_resources(const arguments &given);

}  // namespace pmctl

#endif
