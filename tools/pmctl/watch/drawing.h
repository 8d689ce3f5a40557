// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_WATCH_DRAWING_H
#define PMCTL_WATCH_DRAWING_H

#include <string>
#include <vector>

namespace pmctl {

// The text for a screen of `height` lines, drawn over what is there: no line is wrapped, and when there are too many
// lines, the last one says how many are left out.
std::string screen_drawing(const std::string &text, unsigned height);

}  // namespace pmctl

#endif
