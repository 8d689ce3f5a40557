// SPDX-License-Identifier: Apache-2.0
#include "settings/line_words.h"

#include <charconv>

#include <fmt/core.h>

#include "failure.h"

namespace pmctl {
namespace {

constexpr std::string_view blanks = " \t";

// Takes so many characters off the beginning of a line.
std::string_view take(std::string_view &line, size_t count) {
    const std::string_view taken = line.substr(0, count);
    line.remove_prefix(taken.size());
    return taken;
}

// The byte of "41".
char byte_of(std::string_view digits) {
    uint8_t byte = 0;
    const auto [rest, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    if (digits.size() != 2 || error != std::errc{} || rest != digits.data() + digits.size())
        throw usage_error(fmt::format("not two hexadecimal digits behind \\x: {}", shown_word(std::string(digits))));
    return static_cast<char>(byte);
}

// What follows a backslash.
char take_escaped(std::string_view &line) {
    const std::string_view escaped = take(line, 1);
    if (escaped == "\"" || escaped == "\\") return escaped.front();
    if (escaped == "x") return byte_of(take(line, 2));
    throw usage_error(fmt::format("\\{} has no meaning in quotes", escaped));
}

// The rest of a word in quotes.
std::string take_quoted(std::string_view &line) {
    std::string word;
    for (std::string_view next = take(line, 1); next != "\""; next = take(line, 1)) {
        if (next.empty()) throw usage_error("the closing quote is missing");
        word += next == "\\" ? take_escaped(line) : next.front();
    }
    if (!line.empty() && blanks.find(line.front()) == std::string_view::npos)
        throw usage_error("a blank must follow the closing quote");
    return word;
}

std::string take_word(std::string_view &line) {
    if (!line.starts_with('"')) return std::string(take(line, line.find_first_of(blanks)));
    take(line, 1);
    return take_quoted(line);
}

void take_blanks(std::string_view &line) { take(line, line.find_first_not_of(blanks)); }

}  // namespace

std::vector<std::string> line_words(std::string_view line) {
    std::vector<std::string> words;
    for (take_blanks(line); !line.empty(); take_blanks(line)) words.push_back(take_word(line));
    return words;
}

}  // namespace pmctl
