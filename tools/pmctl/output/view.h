// SPDX-License-Identifier: Apache-2.0
// What a command has to show, before it becomes text: sheets of cells.
#ifndef PMCTL_OUTPUT_VIEW_H
#define PMCTL_OUTPUT_VIEW_H

#include <cstdint>
#include <string>
#include <vector>

namespace pmctl {

enum class tone : uint8_t { plain, good, warning, bad };

struct cell {
    std::string text;
    pmctl::tone tone = tone::plain;
    bool changed = false;  // since the drawing before, when there was one
};

// A row is known by its first cell.
using row = std::vector<cell>;

// With a header it is a table. Without one it is a list: each row is a label and its value; a row of one cell is the
// heading of the rows that follow.
struct sheet {
    std::string title;  // above it, when not empty
    std::vector<std::string> header;
    std::vector<row> rows;
};

inline bool is_heading(const sheet &in, const row &cells) { return in.header.empty() && cells.size() == 1; }

struct view {
    std::vector<sheet> sheets;
    std::string text;  // after them, as it stands: JSON, command lines
};

}  // namespace pmctl

#endif
