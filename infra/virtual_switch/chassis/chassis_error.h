// SPDX-License-Identifier: Apache-2.0
// chassis_error.h: a mistake in a chassis file.
#ifndef VIRTUAL_SWITCH_CHASSIS_CHASSIS_ERROR_H
#define VIRTUAL_SWITCH_CHASSIS_CHASSIS_ERROR_H

#include <algorithm>
#include <stdexcept>
#include <string>

namespace virtual_switch {

inline bool is_control(char character) { return (character >= 0 && character < ' ') || character == 0x7f; }

// What it says is one line, "LINE: KEY: what is wrong", even when it quotes a file that holds other characters.
class chassis_error : public std::runtime_error {
  public:
    chassis_error(unsigned line, const std::string &key, const std::string &what)
        : std::runtime_error(without_controls(std::to_string(line) + ": " + key + ": " + what)) {}

  private:
    static std::string without_controls(std::string text) {
        std::replace_if(text.begin(), text.end(), is_control, '?');
        return text;
    }
};

}  // namespace virtual_switch

#endif
