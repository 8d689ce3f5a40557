// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMAND_TABLE_H
#define PMCTL_COMMAND_TABLE_H

#include "command.h"

namespace pmctl {

// Every command, in the order of the help.
std::span<const command> all_commands();

}  // namespace pmctl

#endif
