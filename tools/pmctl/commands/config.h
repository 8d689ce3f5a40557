// SPDX-License-Identifier: Apache-2.0
// config: changes the configuration of the switch.
#ifndef PMCTL_COMMANDS_CONFIG_H
#define PMCTL_COMMANDS_CONFIG_H

#include "command.h"

namespace pmctl {

command_result run_config_file(const arguments &given);
command_result run_config_interface(const arguments &given);
command_result run_create_sub_interfaces(const arguments &given);
command_result run_delete_sub_interfaces(const arguments &given);
command_result run_create_loopbacks(const arguments &given);
command_result run_delete_loopbacks(const arguments &given);

}  // namespace pmctl

#endif
