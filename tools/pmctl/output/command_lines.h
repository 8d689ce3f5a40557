// SPDX-License-Identifier: Apache-2.0
// The settings of a port as the command lines that would make them.
#ifndef PMCTL_OUTPUT_COMMAND_LINES_H
#define PMCTL_OUTPUT_COMMAND_LINES_H

#include <string>

#include "settings/setting_table.h"

namespace pmctl {

// The line that makes a change, or nothing when it is no value of the setting.
std::string setting_line(const setting_change &change);

// A line that names the interface, after one that creates it when it is a sub-interface or a loopback, and an indented
// line for each setting.
std::string command_lines(const pm_port_info_t &port);

}  // namespace pmctl

#endif
