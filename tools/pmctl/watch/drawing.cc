// SPDX-License-Identifier: Apache-2.0
#include "watch/drawing.h"

#include <fmt/core.h>

#include <sstream>

namespace pmctl {
namespace {

constexpr const char *begin_at_top = "\033[?7l\033[H";  // without wrapping, so that a line is a line
constexpr const char *end_of_line = "\033[K\n";
constexpr const char *end_below = "\033[J\033[?7h";

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// The cursor ends below the last line.
void crop(std::vector<std::string> &lines, size_t room) {
    if (lines.size() <= room || room == 0) return;
    const size_t left_out = lines.size() - room + 1;
    lines.resize(room - 1);
    lines.push_back(fmt::format("\xe2\x80\xa6 {} more lines", left_out));
}

}  // namespace

std::string screen_drawing(const std::string &text, unsigned height) {
    std::vector<std::string> lines = lines_of(text);
    crop(lines, height - 1);
    std::string drawing = begin_at_top;
    for (const std::string &line : lines) drawing.append(line).append(end_of_line);
    return drawing + end_below;
}

}  // namespace pmctl
