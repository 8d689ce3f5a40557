// SPDX-License-Identifier: Apache-2.0
// Texts as wide as a terminal shows them. They are UTF-8; a byte that is not counts as one column. Sequences that
// colour a text are characters without width.
#ifndef PMCTL_OUTPUT_TEXT_WIDTH_H
#define PMCTL_OUTPUT_TEXT_WIDTH_H

#include <string>
#include <string_view>

namespace pmctl {

// In columns: combining characters have none, East Asian ones two.
size_t text_width(std::string_view text);

// The text, or its beginning with "…" after it, in at most `width` columns, which are one at least.
std::string shortened(std::string_view text, size_t width);

}  // namespace pmctl

#endif
