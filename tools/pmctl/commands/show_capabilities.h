// SPDX-License-Identifier: Apache-2.0
// show interface capabilities: what kinds of interfaces support.
#ifndef PMCTL_COMMANDS_SHOW_CAPABILITIES_H
#define PMCTL_COMMANDS_SHOW_CAPABILITIES_H

#include "command.h"

namespace pmctl {

// The switch is asked only with --all, and then only for the names of its interfaces.
command_result run_show_capabilities(const arguments &given);

}  // namespace pmctl

#endif
