// SPDX-License-Identifier: Apache-2.0
// The values of a setting as words, in both directions: what is written reads back to the same value.
#ifndef PMCTL_SETTINGS_VOCABULARY_H
#define PMCTL_SETTINGS_VOCABULARY_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pmctl {

struct vocabulary {
    std::span<const uint32_t> worded = {};     // values that have words, no two the same
    std::string (*words)(uint32_t) = nullptr;  // of these
    uint32_t least = 1;                        // values that are written as numbers; none when `most` is less
    uint32_t most = 0;
    std::string_view unit = {};  // of these
};

// Nothing for what is no value.
std::optional<std::string> written_value(const vocabulary &of, uint32_t value);

// A value that has words is not taken as a number: some of them are codes that mean no amount.
std::optional<uint32_t> read_value(const vocabulary &of, const std::string &text);

// The words of the value whose number was typed instead of them.
std::optional<std::string> words_of_code(const vocabulary &of, const std::string &number);

// Every text that stands for a value.
std::vector<std::string> value_words(const vocabulary &of);

// For people: "auto or a number of Mbit/s from 1 to 65535".
std::string values_taken(const vocabulary &of);

}  // namespace pmctl

#endif
