// SPDX-License-Identifier: Apache-2.0
#include "chassis/value_reader.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <numeric>
#include <utility>

#include "chassis/chassis_error.h"

namespace virtual_switch {
namespace {

[[noreturn]] void fail_type(const document_value &value, const std::string &key, const std::string &wanted) {
    throw chassis_error(value.line, key, "must be " + wanted + ", not " + std::string(value.type_name()));
}

std::string shown(double number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", number);
    return text.data();
}

// How many letters have to be changed, added or taken away to get from one word to the other.
size_t edit_distance(std::string_view from, std::string_view to) {
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = std::exchange(row[j + 1], std::min({replaced, row[j] + 1, row[j + 1] + 1}));
        }
    }
    return row.back();
}

}  // namespace

uint32_t read_number(const document_value &value, const std::string &key, number_range range) {
    const auto *number = std::get_if<int64_t>(&value.data);
    if (number == nullptr) fail_type(value, key, "a number");
    if (*number < range.least || *number > range.most) {
        throw chassis_error(value.line, key,
                            std::to_string(*number) + " is not in " + std::to_string(range.least) + " to " +
                                std::to_string(range.most));
    }
    return static_cast<uint32_t>(*number);
}

double read_decimal(const document_value &value, const std::string &key, decimal_range range) {
    const auto *whole = std::get_if<int64_t>(&value.data);
    const auto *fraction = std::get_if<double>(&value.data);
    if (whole == nullptr && fraction == nullptr) fail_type(value, key, "a number");
    const double number = whole != nullptr ? static_cast<double>(*whole) : *fraction;
    if (number >= range.least && number <= range.most) return number;
    throw chassis_error(value.line, key,
                        shown(number) + " is not in " + shown(range.least) + " to " + shown(range.most));
}

const std::string &read_any_text(const document_value &value, const std::string &key, size_t longest) {
    const auto *text = std::get_if<std::string>(&value.data);
    if (text == nullptr) fail_type(value, key, "a text");
    if (text->size() > longest) {
        throw chassis_error(value.line, key, "is longer than " + std::to_string(longest) + " bytes");
    }
    return *text;
}

const std::string &read_text(const document_value &value, const std::string &key, size_t longest) {
    const std::string &text = read_any_text(value, key, longest);
    if (std::any_of(text.begin(), text.end(), is_control)) {
        throw chassis_error(value.line, key, "holds a control character");
    }
    return text;
}

uint32_t read_word(const document_value &value, const std::string &key, std::span<const named_value> words) {
    constexpr size_t longest_word = 64;
    const std::string &text = read_text(value, key, longest_word);
    std::vector<std::string_view> known;
    for (const named_value &candidate : words) {
        if (candidate.word == text) return candidate.value;
        known.push_back(candidate.word);
    }
    throw chassis_error(value.line, key, "unknown word '" + text + "'" + suggestion(text, known));
}

const document_array &read_array(const document_value &value, const std::string &key, size_t longest) {
    const auto *array = std::get_if<document_array>(&value.data);
    if (array == nullptr) fail_type(value, key, "an array");
    if (array->size() > longest) {
        throw chassis_error(value.line, key, "has more than " + std::to_string(longest) + " elements");
    }
    return *array;
}

uint32_t read_ipv4_address(const document_value &value, const std::string &key) {
    const std::string &text = read_text(value, key, INET_ADDRSTRLEN);
    uint32_t address = 0;
    if (inet_pton(AF_INET, text.c_str(), &address) != 1) {
        throw chassis_error(value.line, key, "'" + text + "' is no IPv4 address");
    }
    return address;
}

std::string suggestion(std::string_view word, std::span<const std::string_view> candidates) {
    constexpr size_t longest_word = 64;
    if (candidates.empty() || word.size() > longest_word) return "";
    const auto nearest = std::min_element(candidates.begin(), candidates.end(), [word](auto a, auto b) {
        return edit_distance(word, a) < edit_distance(word, b);
    });
    const size_t allowed = std::max<size_t>(2, nearest->size() / 3);
    return edit_distance(word, *nearest) > allowed ? "" : "; did you mean '" + std::string(*nearest) + "'?";
}

}  // namespace virtual_switch
