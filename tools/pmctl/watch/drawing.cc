// SPDX-License-Identifier: Apache-2.0
#include "watch/drawing.h"

#include <fmt/core.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "output/text_width.h"

namespace pmctl {
namespace {

// Erasing comes before the text: behind a line as wide as the screen it would take the last character.
constexpr const char *to_top = "\033[H";
constexpr const char *erase_line = "\033[K";
constexpr const char *erase_below = "\033[J";
constexpr const char *usual_look = "\033[0m";

std::vector<std::string> lines_of(const std::string &text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

void crop(std::vector<std::string> &lines, size_t room) {
    if (lines.size() <= room) return;
    const size_t left_out = lines.size() - room + 1;
    lines.resize(room - 1);
    lines.push_back(fmt::format("\xe2\x80\xa6 {} more lines", left_out));
}

// In a line that is cut the end of a colour may be lost.
std::string cut(const std::string &line, unsigned columns) {
    if (columns == 0 || text_width(line) <= columns) return line;
    return shortened(line, columns) + usual_look;
}

}  // namespace

std::string screen_drawing(const std::string &text, const terminal &screen) {
    std::vector<std::string> lines = lines_of(text);
    crop(lines, screen.height);
    std::string drawing = to_top;
    for (size_t i = 0; i + 1 < lines.size(); ++i)
        drawing.append(erase_line).append(cut(lines[i], screen.columns)).append("\n");
    return drawing + erase_below + (lines.empty() ? "" : cut(lines.back(), screen.columns));
}

}  // namespace pmctl
