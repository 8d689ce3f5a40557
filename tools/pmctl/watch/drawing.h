// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_WATCH_DRAWING_H
#define PMCTL_WATCH_DRAWING_H

#include <string>

#include "output/terminal.h"

namespace pmctl {

// The text for a screen, drawn over what is there: lines are cut to its width, and when there are too many, the last
// one says how many are left out. The cursor stays behind the last line. The screen's modes are not touched, so a
// drawing may break off anywhere.
std::string screen_drawing(const std::string &text, const terminal &screen);

// What ends the last drawing, whole or not: the cursor goes to an empty line below.
inline constexpr const char *below_drawing = "\033[0m\n\033[J";

}  // namespace pmctl

#endif
