// SPDX-License-Identifier: Apache-2.0
// Interface names and ranges as people type them.
#ifndef PMCTL_SWITCH_INTERFACE_NAMES_H
#define PMCTL_SWITCH_INTERFACE_NAMES_H

#include <string>
#include <vector>

#include "port_mgr/cpp/names.hpp"
#include "switch/interface_ranges.h"

namespace pmctl {

// Reads "fc1/1", "fc1/1-12", "fc1/1-fc1/12" or several of them with commas between. Throws usage_error.
std::vector<interface_range> parse_interface_ranges(const std::string &text);

using port_mgr::interface_name;

// IF_TYPE_NONE when it cannot be told.
uint8_t interface_type(if_index_t index);

// The kinds of interfaces that commands create.
bool is_sub_interface(if_index_t index);
bool is_loopback(if_index_t index);

// The name without the number at its end: "fc1/" of "fc1/12".
std::string name_stem(const std::string &name);

}  // namespace pmctl

#endif
