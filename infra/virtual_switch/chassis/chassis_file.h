// SPDX-License-Identifier: Apache-2.0
// chassis_file.h: reads the TOML file that describes a chassis; docs/chassis-file.md documents its keys.
#ifndef VIRTUAL_SWITCH_CHASSIS_CHASSIS_FILE_H
#define VIRTUAL_SWITCH_CHASSIS_CHASSIS_FILE_H

#include <string>
#include <string_view>

#include "chassis/model.h"

namespace virtual_switch {

// Reads and settles the chassis of a file of at most 1 MiB. Throws std::runtime_error with one line,
// "FILE:LINE: KEY: what is wrong", for the first mistake.
chassis_model load_chassis(const std::string &path);

// The same from the text of a file; the line starts with LINE. Files that it names are relative to `folder`, or to the
// working directory; a mistake in one of them starts with its name.
chassis_model parse_chassis(std::string_view text, const std::string &folder = "");

}  // namespace virtual_switch

#endif
