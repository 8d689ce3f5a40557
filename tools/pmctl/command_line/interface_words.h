// SPDX-License-Identifier: Apache-2.0
// Words that name interfaces. A list of them may be parted at its commas.
#ifndef PMCTL_COMMAND_LINE_INTERFACE_WORDS_H
#define PMCTL_COMMAND_LINE_INTERFACE_WORDS_H

#include <string>
#include <vector>

#include "switch/interface_ranges.h"

namespace pmctl {

// Whether the next word after these names interfaces, too: "fc1/2" does after "fc1/1" and anything does after "fc1/1,",
// but "shutdown" does not after "fc1/1". No setting begins with a word that has a digit or a comma.
bool goes_on_naming(const std::vector<std::string> &words, const std::string &next);

// The ranges that words name. Throws usage_error, for an unknown name with what may have been meant: a kind of
// interfaces that exists or one of `beside`, or else what `otherwise` says.
std::vector<interface_range> interfaces_named(const std::vector<std::string> &words,
                                              const std::vector<std::string> &beside = {},
                                              const std::string &otherwise = {});

}  // namespace pmctl

#endif
