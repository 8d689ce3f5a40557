// SPDX-License-Identifier: Apache-2.0
// config_value_kinds.h: how the value of each configuration attribute lies in its element.
#ifndef PROTOCOL_CONFIG_VALUE_KINDS_H
#define PROTOCOL_CONFIG_VALUE_KINDS_H

#include <cstddef>

#include "port_mgr/config_attribute.h"
#include "protocol/attribute_set.h"

namespace pm {

enum class value_kind : uint8_t {
    none,
    byte,
    short_number,  // network order
    word,          // network order
    raw_word,      // as it lies in memory
    raw_pair,      // the same, two of them
    text           // a field of characters
};

struct value_kind_row {
    value_kind kind;
    size_t width;             // bytes in the element, and in memory
    attribute_set both_ways;  // attributes that are written and read
    attribute_set only_written;
};

// A number that stands in no row has no kind.
inline constexpr auto config_value_kinds = std::to_array({
    value_kind_row{value_kind::byte, 1, {1, 4, 5, 11, 12, 13, 17, 22, 34, 35, 42, 44, 48}, {59, 71, 72, 84, 85}},
    value_kind_row{value_kind::short_number, 2, {7, 15, 52}, {56, 57, 58}},
    value_kind_row{value_kind::word,
                   4,
                   {2, 3, 8, 14, 21, 23, 25, 27, 28, 29, 31, 32, 36, 37, 41, 45, 50, 54, 78, 80, 81},
                   {49, 51, 53, 61, 62, 67, 68}},
    value_kind_row{value_kind::raw_word, 4, {}, {18, 19, 20, 47, 55}},
    value_kind_row{value_kind::raw_pair, 8, {9}, {30}},
    value_kind_row{value_kind::text, PM_CFG_VALUE_SIZE, {6, 83}, {}},
});

// How an attribute is written.
constexpr value_kind written_kind(uint8_t attribute) {
    for (const value_kind_row &row : config_value_kinds) {
        if (row.both_ways.contains(attribute) || row.only_written.contains(attribute)) return row.kind;
    }
    return value_kind::none;
}

// How it is read; some of those that are written are not.
constexpr value_kind read_kind(uint8_t attribute) {
    for (const value_kind_row &row : config_value_kinds) {
        if (row.both_ways.contains(attribute)) return row.kind;
    }
    return value_kind::none;
}

constexpr size_t width_of(value_kind kind) {
    for (const value_kind_row &row : config_value_kinds) {
        if (row.kind == kind) return row.width;
    }
    return 0;
}

}  // namespace pm

#endif
