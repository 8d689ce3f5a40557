// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMAND_LINE_HELP_TEXT_H
#define PMCTL_COMMAND_LINE_HELP_TEXT_H

#include "command.h"

namespace pmctl {

// The help of a command or of a family of commands; null: of the program.
std::string help_text(const command *of);

}  // namespace pmctl

#endif
