// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_RENDER_H
#define PMCTL_OUTPUT_RENDER_H

#include "output/terminal.h"
#include "output/view.h"

namespace pmctl {

// The view as text. Sheets are parted by a blank line; one without rows is left out. Every column of a table is as
// wide as its content, or narrower where the table would not fit on the terminal; the labels of all lists are as wide
// as the longest.
std::string render(const view &shown, const terminal &on);

}  // namespace pmctl

#endif
