// SPDX-License-Identifier: Apache-2.0
// The types of interfaces, in words.
#ifndef PMCTL_SWITCH_INTERFACE_TYPES_H
#define PMCTL_SWITCH_INTERFACE_TYPES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace pmctl {

// The word of a type, or its number where it has none.
std::string type_word(uint32_t type);

// Every word.
std::vector<std::string> type_words();

// Those whose interfaces can be listed without a report of the library's.
std::vector<uint8_t> listed_types();

// The type of a word, in letters of either case.
std::optional<uint8_t> type_of_word(const std::string &word);

}  // namespace pmctl

#endif
