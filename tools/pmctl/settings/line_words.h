// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_SETTINGS_LINE_WORDS_H
#define PMCTL_SETTINGS_LINE_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace pmctl {

// The words of a line, parted by blanks and tabs. A word in double quotes may hold these; in it \" and \\ stand for
// these characters and \xNN for any byte. Throws usage_error for bad quotes.
std::vector<std::string> line_words(std::string_view line);

}  // namespace pmctl

#endif
