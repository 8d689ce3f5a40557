// SPDX-License-Identifier: Apache-2.0
// complete: what a shell offers for the last of some words; for the shell's completion script, not for people.
#ifndef PMCTL_COMMANDS_COMPLETE_H
#define PMCTL_COMMANDS_COMPLETE_H

#include "command.h"

namespace pmctl {

command_result run_complete(const arguments &given);

}  // namespace pmctl

#endif
