// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_PRINTABLE_TEXT_H
#define PMCTL_OUTPUT_PRINTABLE_TEXT_H

#include <string>
#include <string_view>

namespace pmctl {

// Control characters are here also those that part lines or turn the direction of what follows.

// The text as it may go to a terminal: on one line, without control characters ('?' instead), and what is not UTF-8
// replaced by U+FFFD.
std::string printable_text(std::string_view text);

// The bytes before the first one of a control character or of what is not UTF-8.
size_t printable_length(std::string_view text);

// The text in double quotes, without loss: \" and \\ stand for these characters, and \xNN for a byte of a control
// character or of what is not UTF-8.
std::string quoted_text(std::string_view text);

}  // namespace pmctl

#endif
