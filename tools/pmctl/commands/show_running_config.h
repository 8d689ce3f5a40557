// SPDX-License-Identifier: Apache-2.0
// show running-config: the settings of ports as command lines.
#ifndef PMCTL_COMMANDS_SHOW_RUNNING_CONFIG_H
#define PMCTL_COMMANDS_SHOW_RUNNING_CONFIG_H

#include "command.h"

namespace pmctl {

command_result run_show_running_config(const arguments &given);

}  // namespace pmctl

#endif
