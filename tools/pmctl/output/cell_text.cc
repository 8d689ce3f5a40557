// SPDX-License-Identifier: Apache-2.0
#include "output/cell_text.h"

#include <fmt/core.h>

#include "output/text_width.h"

namespace pmctl {
namespace {

constexpr std::string_view change_mark = "*";

std::string_view mark_of(const cell &from, const terminal &on) {
    return from.changed && !on.colour ? change_mark : std::string_view{};
}

// The parameters of the sequence that selects how characters look.
const char *look_of(const cell &from) {
    switch (from.tone) {
        case tone::good:
            return from.changed ? "32;7" : "32";
        case tone::warning:
            return from.changed ? "33;7" : "33";
        case tone::bad:
            return from.changed ? "31;7" : "31";
        default:
            return from.changed ? "7" : "";
    }
}

}  // namespace

size_t mark_width(const cell &from, const terminal &on) { return mark_of(from, on).size(); }

cell_text cell_text_of(const cell &from, size_t width, const terminal &on) {
    std::string text = shortened(from.text, width).append(mark_of(from, on));
    const size_t shown_width = text_width(text);
    const std::string_view look = on.colour && !text.empty() ? look_of(from) : "";
    if (!look.empty()) text = fmt::format("\033[{}m{}\033[0m", look, text);
    return {std::move(text), shown_width};
}

}  // namespace pmctl
