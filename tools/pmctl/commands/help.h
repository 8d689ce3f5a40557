// SPDX-License-Identifier: Apache-2.0
// help: what a command is for and how it is used.
#ifndef PMCTL_COMMANDS_HELP_H
#define PMCTL_COMMANDS_HELP_H

#include "command.h"

namespace pmctl {

command_result run_help(const arguments &given);

}  // namespace pmctl

#endif
