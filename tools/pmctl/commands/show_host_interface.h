// SPDX-License-Identifier: Apache-2.0
// show host interface: what the kernel counts of a network interface of this machine.
#ifndef PMCTL_COMMANDS_SHOW_HOST_INTERFACE_H
#define PMCTL_COMMANDS_SHOW_HOST_INTERFACE_H

#include "command.h"

namespace pmctl {

// No switch is asked.
command_result run_show_host_interface(const arguments &given);

}  // namespace pmctl

#endif
