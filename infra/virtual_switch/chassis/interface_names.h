// SPDX-License-Identifier: Apache-2.0
// interface_names.h: lists and ranges of interface names, such as "fc1/1-12, fc2/3, port-channel10".
#ifndef VIRTUAL_SWITCH_CHASSIS_INTERFACE_NAMES_H
#define VIRTUAL_SWITCH_CHASSIS_INTERFACE_NAMES_H

#include <string>
#include <vector>

#include "chassis/document.h"
#include "platform/types.h"

namespace virtual_switch {

// How many interfaces one range may have: as many as an interface can have sub-interfaces.
inline constexpr uint32_t longest_range = 4095;

// The interfaces that a text names, in its order; whether they exist is not looked at. Throws chassis_error.
std::vector<if_index_t> read_interfaces(const document_value &value, const std::string &key);

}  // namespace virtual_switch

#endif
