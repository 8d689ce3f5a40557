// SPDX-License-Identifier: Apache-2.0
#include "settings/vocabulary.h"

#include <algorithm>
#include <charconv>

#include <fmt/core.h>

#include "command_line/suggestion.h"

namespace pmctl {
namespace {

std::optional<uint32_t> worded_value(const vocabulary &of, const std::string &text) {
    const auto found =
        std::find_if(of.worded.begin(), of.worded.end(), [&](uint32_t value) { return of.words(value) == text; });
    return found == of.worded.end() ? std::nullopt : std::optional(*found);
}

bool has_words(const vocabulary &of, uint32_t value) {
    return std::find(of.worded.begin(), of.worded.end(), value) != of.worded.end();
}

std::optional<uint32_t> number_in(const std::string &text) {
    uint32_t number = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    return error == std::errc{} && rest == end ? std::optional(number) : std::nullopt;
}

bool may_be_number(const vocabulary &of, uint32_t value) {
    return value >= of.least && value <= of.most && !has_words(of, value);
}

}  // namespace

std::optional<std::string> written_value(const vocabulary &of, uint32_t value) {
    if (has_words(of, value)) return of.words(value);
    return may_be_number(of, value) ? std::optional(std::to_string(value)) : std::nullopt;
}

std::optional<uint32_t> read_value(const vocabulary &of, const std::string &text) {
    if (const auto value = worded_value(of, text)) return value;
    const auto number = number_in(text);
    return number && may_be_number(of, *number) ? number : std::nullopt;
}

std::optional<std::string> words_of_code(const vocabulary &of, const std::string &number) {
    const auto value = number_in(number);
    return value && has_words(of, *value) ? std::optional(of.words(*value)) : std::nullopt;
}

std::vector<std::string> value_words(const vocabulary &of) {
    std::vector<std::string> texts;
    for (const uint32_t value : of.worded) texts.push_back(of.words(value));
    return texts;
}

std::string values_taken(const vocabulary &of) {
    std::vector<std::string> texts = value_words(of);
    const std::string of_unit = of.unit.empty() ? "" : fmt::format(" of {}", of.unit);
    if (of.least <= of.most) texts.push_back(fmt::format("a number{} from {} to {}", of_unit, of.least, of.most));
    return alternatives(texts);
}

}  // namespace pmctl
