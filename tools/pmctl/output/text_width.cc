// SPDX-License-Identifier: Apache-2.0
#include "output/text_width.h"

#include <algorithm>
#include <bit>
#include <cstdint>

namespace pmctl {
namespace {

constexpr std::string_view ellipsis = "\xe2\x80\xa6";

struct character_range {
    char32_t first;
    char32_t last;
};

constexpr character_range combining[] = {{0x300, 0x36f}, {0x200b, 0x200f}, {0x20d0, 0x20ff}, {0xfe00, 0xfe0f}};

constexpr character_range wide[] = {{0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0xa4cf},  {0xac00, 0xd7a3},
                                    {0xf900, 0xfaff},   {0xfe30, 0xfe6f},   {0xff00, 0xff60},  {0xffe0, 0xffe6},
                                    {0x1f300, 0x1f64f}, {0x1f900, 0x1f9ff}, {0x20000, 0x3fffd}};

template <size_t count>
bool is_in(const character_range (&ranges)[count], char32_t character) {
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const character_range &range) {
        return range.first <= character && character <= range.last;
    });
}

constexpr std::string_view sequence_begin = "\033[";

// Characters of one byte and one column, of which most texts are made.
bool is_ascii(char character) { return character >= ' ' && character <= '~'; }

bool continues(char byte) { return (static_cast<uint8_t>(byte) & 0xc0) == 0x80; }

// The bytes of the first character: a byte and those that continue it, or a sequence up to its final 'm'.
size_t first_length(std::string_view text) {
    if (text.starts_with(sequence_begin)) return std::min(text.find('m'), text.size() - 1) + 1;
    size_t length = 1;
    while (length < std::min<size_t>(text.size(), 4) && continues(text[length])) ++length;
    return length;
}

char32_t decoded(std::string_view character) {
    const auto lead = static_cast<uint8_t>(character[0]);
    const int marks = std::countl_one(lead);  // the length in its highest bits
    char32_t value = marks == 0 ? lead : lead & (0x7f >> marks);
    for (const char byte : character.substr(1)) value = value << 6 | (static_cast<uint8_t>(byte) & 0x3f);
    return value;
}

size_t character_width(std::string_view character) {
    if (character.starts_with(sequence_begin)) return 0;
    const char32_t value = decoded(character);
    if (is_in(combining, value)) return 0;
    return is_in(wide, value) ? 2 : 1;
}

}  // namespace

size_t text_width(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), is_ascii)) return text.size();
    size_t width = 0;
    while (!text.empty()) {
        const std::string_view next = text.substr(0, first_length(text));
        width += character_width(next);
        text.remove_prefix(next.size());
    }
    return width;
}

std::string shortened(std::string_view text, size_t width) {
    if (text_width(text) <= width) return std::string(text);
    std::string beginning;
    size_t used = text_width(ellipsis);
    for (;;) {
        const std::string_view next = text.substr(0, first_length(text));
        used += character_width(next);
        if (used > width) return beginning.append(ellipsis);
        beginning += next;
        text.remove_prefix(next.size());
    }
}

}  // namespace pmctl
