// SPDX-License-Identifier: Apache-2.0
// program_name.h: what messages start with.
#ifndef VIRTUAL_SWITCH_PROGRAM_NAME_H
#define VIRTUAL_SWITCH_PROGRAM_NAME_H

namespace virtual_switch {

inline constexpr const char *program_name = "pm-virtual-switch";

}  // namespace virtual_switch

#endif
