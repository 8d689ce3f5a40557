// SPDX-License-Identifier: Apache-2.0
#include "output/printable_text.h"

#include <algorithm>
#include <cstdint>

#include <fmt/core.h>

namespace pmctl {
namespace {

constexpr std::string_view replacement = "\xef\xbf\xbd";
constexpr std::string_view control_replacement = "?";

uint8_t byte_at(std::string_view text, size_t position) { return static_cast<uint8_t>(text[position]); }

// The number of bytes that a lead byte announces, or 0 when it is none.
size_t announced_length(uint8_t lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xc2 && lead < 0xe0) return 2;
    if (lead >= 0xe0 && lead < 0xf0) return 3;
    if (lead >= 0xf0 && lead < 0xf5) return 4;
    return 0;
}

// Second bytes that would make an overlong form, a surrogate or a code point beyond the last one.
bool second_byte_fits(uint8_t lead, uint8_t second) {
    switch (lead) {
        case 0xe0:
            return second >= 0xa0;
        case 0xed:
            return second < 0xa0;
        case 0xf0:
            return second >= 0x90;
        case 0xf4:
            return second < 0x90;
        default:
            return true;
    }
}

// The first character, or nothing when the text does not begin with one.
std::string_view first_character(std::string_view text) {
    const size_t length = announced_length(byte_at(text, 0));
    if (length == 0 || length > text.size()) return {};
    for (size_t i = 1; i < length; ++i)
        if ((byte_at(text, i) & 0xc0) != 0x80) return {};
    if (length > 1 && !second_byte_fits(byte_at(text, 0), byte_at(text, 1))) return {};
    return text.substr(0, length);
}

struct character_range {
    std::string_view first;
    std::string_view last;
};

// The order of characters is that of their bytes.
constexpr character_range controls[] = {{"", "\x1f"},         {"\x7f", "\x7f"},     {"\xc2\x80", "\xc2\x9f"},
                                        {"\u061c", "\u061c"}, {"\u200e", "\u200f"},  // direction marks
                                        {"\u2028", "\u202e"},   // line and paragraph ends, changes of direction
                                        {"\u2066", "\u2069"}};  // the same within a line

bool is_control(std::string_view character) {
    return std::any_of(std::begin(controls), std::end(controls), [character](const character_range &range) {
        return range.first <= character && character <= range.last;
    });
}

std::string hexadecimal(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) text += fmt::format("\\x{:02x}", static_cast<uint8_t>(byte));
    return text;
}

std::string quoted_character(std::string_view character) {
    if (is_control(character)) return hexadecimal(character);
    if (character == "\"" || character == "\\") return fmt::format("\\{}", character);
    return std::string(character);
}

}  // namespace

std::string printable_text(std::string_view text) {
    std::string printable;
    while (!text.empty()) {
        const std::string_view character = first_character(text);
        if (character.empty())
            printable += replacement;
        else
            printable += is_control(character) ? control_replacement : character;
        text.remove_prefix(character.empty() ? 1 : character.size());
    }
    return printable;
}

size_t printable_length(std::string_view text) {
    size_t length = 0;
    while (length < text.size()) {
        const std::string_view character = first_character(text.substr(length));
        if (character.empty() || is_control(character)) break;
        length += character.size();
    }
    return length;
}

std::string quoted_text(std::string_view text) {
    std::string quoted = "\"";
    while (!text.empty()) {
        const std::string_view character = first_character(text);
        quoted += character.empty() ? hexadecimal(text.substr(0, 1)) : quoted_character(character);
        text.remove_prefix(character.empty() ? 1 : character.size());
    }
    return quoted + "\"";
}

}  // namespace pmctl
