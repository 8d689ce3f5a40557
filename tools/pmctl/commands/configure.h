// SPDX-License-Identifier: Apache-2.0
// What the commands that configure share: a step carried out, and its failures in words.
#ifndef PMCTL_COMMANDS_CONFIGURE_H
#define PMCTL_COMMANDS_CONFIGURE_H

#include "settings/config_file.h"
#include "switch/configuration.h"

namespace pmctl {

// Both note what went wrong, one line for each interface or range, and return false when going on is of no use. What
// exists of a range is configured.
bool carry_out(configuration &on, const setting_step &step, std::vector<std::string> &failures);
bool carry_out(configuration &on, const creation_step &step, std::vector<std::string> &failures);

}  // namespace pmctl

#endif
