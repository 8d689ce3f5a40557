// SPDX-License-Identifier: Apache-2.0
// Interface names and ranges as people type them.
#ifndef PMCTL_INTERFACE_NAMES_H
#define PMCTL_INTERFACE_NAMES_H

#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace pmctl {

// A range of interfaces, both ends included, and the text that named it.
struct interface_range {
    std::string text;
    if_index_t first;
    if_index_t last;
};

// Reads "fc1/1", "fc1/1-12" or several of them with commas between. Throws usage_error.
std::vector<interface_range> parse_interface_ranges(const std::string &text);

std::string interface_name(if_index_t index);

}  // namespace pmctl

#endif
