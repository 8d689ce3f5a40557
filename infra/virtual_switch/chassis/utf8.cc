// SPDX-License-Identifier: Apache-2.0
#include "chassis/utf8.h"

#include <cstdint>

namespace virtual_switch {
namespace {

struct character {
    size_t bytes;  // 0 when they are no character
    uint32_t code;
};

// What a first byte says: how many bytes there are, and the bits of the first.
character first_part(uint8_t byte) {
    if (byte < 0x80) return {1, byte};
    if (byte >> 5 == 0x6) return {2, byte & 0x1fu};
    if (byte >> 4 == 0xe) return {3, byte & 0xfu};
    if (byte >> 3 == 0x1e) return {4, byte & 0x7u};
    return {0, 0};
}

bool is_scalar_value(uint32_t code) { return code < 0xd800 || (code > 0xdfff && code <= 0x10ffff); }

uint32_t least_code(size_t bytes) {
    constexpr uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    return least[bytes];
}

// The character that text starts with.
character first_character(std::string_view text) {
    character first = first_part(static_cast<uint8_t>(text[0]));
    if (first.bytes > text.size()) return {0, 0};
    for (size_t i = 1; i < first.bytes; ++i) {
        const auto byte = static_cast<uint8_t>(text[i]);
        if (byte >> 6 != 0x2) return {0, 0};
        first.code = first.code << 6 | (byte & 0x3fu);
    }
    return first;
}

}  // namespace

bool is_utf8(std::string_view text) {
    while (!text.empty()) {
        const auto [bytes, code] = first_character(text);
        if (bytes == 0 || code < least_code(bytes) || !is_scalar_value(code)) return false;
        text.remove_prefix(bytes);
    }
    return true;
}

}  // namespace virtual_switch
