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

// The commands of one more word than `words`, which may be none.
std::vector<const command *> commands_below(std::string_view words);

// "brief" for "show interface brief".
std::string_view last_word(const command &of);

constexpr bool is_hidden(const command &each) { return *each.summary == '\0'; }

}  // namespace pmctl

#endif
