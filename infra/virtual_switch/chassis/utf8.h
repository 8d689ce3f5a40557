// SPDX-License-Identifier: Apache-2.0
// utf8.h: which bytes are UTF-8.
#ifndef VIRTUAL_SWITCH_CHASSIS_UTF8_H
#define VIRTUAL_SWITCH_CHASSIS_UTF8_H

#include <string_view>

namespace virtual_switch {

// Every character in its shortest form, and none that is half of a pair of UTF-16.
bool is_utf8(std::string_view text);

}  // namespace virtual_switch

#endif
