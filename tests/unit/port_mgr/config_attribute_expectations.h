// SPDX-License-Identifier: Apache-2.0
// config_attribute_expectations.h: how every attribute travels, and the bytes that a value becomes on its way.
#ifndef UNIT_PORT_MGR_CONFIG_ATTRIBUTE_EXPECTATIONS_H
#define UNIT_PORT_MGR_CONFIG_ATTRIBUTE_EXPECTATIONS_H

#include <algorithm>
#include <bit>
#include <string_view>

#include "bytes.h"

namespace unit {

static_assert(std::endian::native == std::endian::little);

// A letter an attribute: byte, short, word, raw word, pair, text, or a dot for none. Capital letters are written but
// not read.
inline constexpr std::string_view attribute_kinds =
    ".bwwbbtswp"  // 0 to 9
    ".bbbws.bRR"  // 10 to 19
    "Rwbw.w.www"  // 20 to 29
    "Pww.bbww.."  // 30 to 39
    ".wb.bw.RbW"  // 40 to 49
    "wWsWwRSSSB"  // 50 to 59
    ".WW....WW."  // 60 to 69
    ".BB.....w."  // 70 to 79
    "ww.tBB";     // 80 to 85
static_assert(attribute_kinds.size() == 86);

inline char attribute_letter(uint32_t type) { return type < attribute_kinds.size() ? attribute_kinds[type] : '.'; }

inline bool is_written(uint32_t type) { return attribute_letter(type) != '.'; }

inline bool is_read(uint32_t type) { return attribute_letter(type) >= 'a'; }

// The kind in small letters.
inline char attribute_kind(uint32_t type) {
    const char letter = attribute_letter(type);
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// Bytes of the value.
inline size_t attribute_width(uint32_t type) {
    switch (attribute_kind(type)) {
        case 'b':
            return 1;
        case 's':
            return 2;
        case 'w':
        case 'r':
            return 4;
        case 'p':
            return 8;
        case 't':
            return 81;
        default:
            return 0;
    }
}

// A value in host memory, with a distinct value in every byte, none of them 0.
inline support::bytes host_value(uint32_t type) {
    support::bytes value;
    for (size_t i = 0; i < attribute_width(type); ++i) value.push_back(static_cast<uint8_t>(0x21 + i));
    return value;
}

// The same value on the wire.
inline support::bytes wire_value(uint32_t type) {
    support::bytes value = host_value(type);
    if (attribute_kind(type) == 's' || attribute_kind(type) == 'w') std::ranges::reverse(value);
    return value;
}

// The element on the wire.
inline support::bytes element_of(uint8_t type, uint8_t length) {
    return support::payload().u8(type).u8(length).append(wire_value(type));
}

}  // namespace unit

#endif
