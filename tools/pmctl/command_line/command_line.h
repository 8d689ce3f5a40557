// SPDX-License-Identifier: Apache-2.0
// From the words of the command line to the command they name.
#ifndef PMCTL_COMMAND_LINE_COMMAND_LINE_H
#define PMCTL_COMMAND_LINE_COMMAND_LINE_H

#include "command.h"

namespace pmctl {

// What the command line asks for: a command, or, when `what` is null, only a text such as the help.
struct invocation {
    const command *what = nullptr;
    arguments given;
    std::string text;
    std::string typed;  // the whole line
};

// Throws usage_error.
invocation parse_command_line(int argc, const char *const *argv);

}  // namespace pmctl

#endif
