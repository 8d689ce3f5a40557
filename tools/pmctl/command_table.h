// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMAND_TABLE_H
#define PMCTL_COMMAND_TABLE_H

#include "command.h"

namespace pmctl {

// Every command, in the order of the help; the head of a family stands before its commands.
std::span<const command> all_commands();

// What may stand anywhere on the command line.
std::span<const argument> global_options();

// The command of exactly these words, or null.
const command *find_command(std::string_view words);

// The words that may follow `head`, which may be empty, to make a command of it; those of hidden ones are left out.
std::vector<std::string> words_below(std::string_view head);

constexpr bool is_hidden(const command &each) { return *each.summary == '\0'; }

}  // namespace pmctl

#endif
