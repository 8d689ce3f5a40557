// SPDX-License-Identifier: Apache-2.0
// show interface reasons: the codes that say why a port is in its state.
#ifndef PMCTL_COMMANDS_SHOW_REASONS_H
#define PMCTL_COMMANDS_SHOW_REASONS_H

#include "command.h"

namespace pmctl {

// No switch is asked.
command_result run_show_reasons(const arguments &given);

}  // namespace pmctl

#endif
