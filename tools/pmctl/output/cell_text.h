// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_CELL_TEXT_H
#define PMCTL_OUTPUT_CELL_TEXT_H

#include "output/terminal.h"
#include "output/view.h"

namespace pmctl {

// How a cell looks: its tone in green, yellow or red; a change in reverse video, or, without colours, with '*' behind
// it.
struct cell_text {
    std::string text;  // with the sequences that colour it
    size_t width;      // in columns
};

// The columns of the '*' behind this cell, if it has one.
size_t mark_width(const cell &from, const terminal &on);

// In at most `width` columns and those of the mark.
cell_text cell_text_of(const cell &from, size_t width, const terminal &on);

}  // namespace pmctl

#endif
