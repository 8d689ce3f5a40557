// SPDX-License-Identifier: Apache-2.0
// value_reader.h: takes values of a chassis file as what their keys need, or throws chassis_error.
#ifndef VIRTUAL_SWITCH_CHASSIS_VALUE_READER_H
#define VIRTUAL_SWITCH_CHASSIS_VALUE_READER_H

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "chassis/document.h"

namespace virtual_switch {

// A word that stands for a number.
struct named_value {
    std::string_view word;
    uint32_t value;
};

// The words of a table's rows; each stands for the position of its row.
template <typename Row, size_t size>
constexpr std::array<named_value, size> words_of(const std::array<Row, size> &table, std::string_view Row::*word) {
    std::array<named_value, size> words{};
    uint32_t position = 0;
    for (const Row &row : table) {
        words[position] = {row.*word, position};
        ++position;
    }
    return words;
}

struct number_range {
    uint32_t least;
    uint32_t most;
};

struct decimal_range {
    double least;
    double most;
};

// `key` is what messages call the value.
uint32_t read_number(const document_value &value, const std::string &key, number_range range);

// A number with or without a fraction.
double read_decimal(const document_value &value, const std::string &key, decimal_range range);
const std::string &read_any_text(const document_value &value, const std::string &key, size_t longest);

// A text without control characters.
const std::string &read_text(const document_value &value, const std::string &key, size_t longest);
uint32_t read_word(const document_value &value, const std::string &key, std::span<const named_value> words);
const document_array &read_array(const document_value &value, const std::string &key, size_t longest);

// An IPv4 address in network order.
uint32_t read_ipv4_address(const document_value &value, const std::string &key);

// "; did you mean 'x'?" with the candidate nearest to a misspelt word, or nothing when none is near.
std::string suggestion(std::string_view word, std::span<const std::string_view> candidates);

}  // namespace virtual_switch

#endif
