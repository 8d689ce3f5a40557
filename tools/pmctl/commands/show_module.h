// SPDX-License-Identifier: Apache-2.0
// show module: the ports of a module.
#ifndef PMCTL_COMMANDS_SHOW_MODULE_H
#define PMCTL_COMMANDS_SHOW_MODULE_H

#include "command.h"

namespace pmctl {

command_result run_show_module(const arguments &given);

}  // namespace pmctl

#endif
