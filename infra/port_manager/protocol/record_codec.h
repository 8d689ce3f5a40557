// SPDX-License-Identifier: Apache-2.0
// record_codec.h: moves records between the wire and memory. One table of fields serves both directions; the
// compiler unrolls it.
#ifndef PROTOCOL_RECORD_CODEC_H
#define PROTOCOL_RECORD_CODEC_H

#include <cstddef>
#include <utility>

#include "protocol/byte_order.h"

namespace pm {

enum class field_kind : uint8_t {
    bytes,  // as they are: characters, single bytes, and words that keep network order
    u16,    // numbers, converted
    u32,
    u64,
    if_index  // an interface index, converted by the platform's function
};

struct record_field {
    size_t wire;    // offset in the record on the wire
    size_t member;  // offset in the record in memory
    field_kind kind;
    size_t count = 1;  // of bytes or numbers
};

// A number has the same bytes swapped both ways, so encoding is decoding with the ends exchanged.
template <field_kind kind, size_t count>
inline void move_field(const uint8_t *from, uint8_t *to, auto convert_if_index) {
    if constexpr (kind == field_kind::bytes) {
        std::memcpy(to, from, count);
    } else if constexpr (kind == field_kind::u16) {
        for (size_t i = 0; i < count; ++i) store(to + 2 * i, load_be16(from + 2 * i));
    } else if constexpr (kind == field_kind::u32) {
        for (size_t i = 0; i < count; ++i) store(to + 4 * i, load_be32(from + 4 * i));
    } else if constexpr (kind == field_kind::u64) {
        for (size_t i = 0; i < count; ++i) store(to + 8 * i, load_be64(from + 8 * i));
    } else {
        store(to, static_cast<uint32_t>(convert_if_index(load<uint32_t>(from))));
    }
}

// Fills the members of the record that the table names, in the table's order.
template <const auto &fields>
inline void decode_record(const uint8_t *wire, void *record, auto ntoh_if_index) {
    auto *const members = static_cast<uint8_t *>(record);
    [&]<size_t... i>(std::index_sequence<i...>) {
        (move_field<fields[i].kind, fields[i].count>(wire + fields[i].wire, members + fields[i].member, ntoh_if_index),
         ...);
    }
    (std::make_index_sequence<fields.size()>{});
}

template <const auto &fields>
inline void encode_record(const void *record, uint8_t *wire, auto hton_if_index) {
    const auto *const members = static_cast<const uint8_t *>(record);
    [&]<size_t... i>(std::index_sequence<i...>) {
        (move_field<fields[i].kind, fields[i].count>(members + fields[i].member, wire + fields[i].wire, hton_if_index),
         ...);
    }
    (std::make_index_sequence<fields.size()>{});
}

}  // namespace pm

#endif
