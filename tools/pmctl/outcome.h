// SPDX-License-Identifier: Apache-2.0
// What a run of the program comes to.
#ifndef PMCTL_OUTCOME_H
#define PMCTL_OUTCOME_H

#include "command_line/command_line.h"
#include "output/terminal.h"

namespace pmctl {

enum exit_status { exit_done = 0, exit_failed = 1, exit_usage = 2 };

struct outcome {
    exit_status status;
    std::string output;
    std::vector<std::string> messages;  // for standard error, one line each, without the program's name
};

// The same before the output is made into text.
struct answer {
    exit_status status;
    view output;
    std::vector<std::string> messages;
};

// Carries out what parse_command_line found, a command by this function of it. Does not throw.
answer run_command(const invocation &call, const command_function &run);

// Carries out what parse_command_line found once, with the output as text for `on`. Does not throw.
outcome carry_out(const invocation &call, const terminal &on = {});

// How a message looks on standard error.
std::string message_line(const std::string &message);

}  // namespace pmctl

#endif
