// SPDX-License-Identifier: Apache-2.0
// chassis_error.h: a mistake in a chassis file.
#ifndef VIRTUAL_SWITCH_CHASSIS_CHASSIS_ERROR_H
#define VIRTUAL_SWITCH_CHASSIS_CHASSIS_ERROR_H

#include <stdexcept>
#include <string>

namespace virtual_switch {

class chassis_error : public std::runtime_error {
  public:
    chassis_error(unsigned line, const std::string &key, const std::string &what)
        : std::runtime_error(std::to_string(line) + ": " + key + ": " + what) {}
};

}  // namespace virtual_switch

#endif
