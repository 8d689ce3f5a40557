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
    if_index  // an interface index, converted by the platform's function
};

struct record_field {
    size_t wire;    // offset in the record on the wire
    size_t member;  // offset in the record in memory
    field_kind kind;
    size_t count = 1;  // of bytes or numbers
};

template <record_field field>
inline void decode_field(const uint8_t *wire, uint8_t *record, auto ntoh_if_index) {
    const uint8_t *from = wire + field.wire;
    uint8_t *to = record + field.member;
    if constexpr (field.kind == field_kind::bytes) {
        std::memcpy(to, from, field.count);
    } else if constexpr (field.kind == field_kind::u16) {
        for (size_t i = 0; i < field.count; ++i)
            store(to + 2 * i, load_be16(from + 2 * i));
    } else if constexpr (field.kind == field_kind::u32) {
        for (size_t i = 0; i < field.count; ++i)
            store(to + 4 * i, load_be32(from + 4 * i));
    } else {
        store(to, static_cast<uint32_t>(ntoh_if_index(load<uint32_t>(from))));
    }
}

// A number has the same bytes swapped both ways, so encoding is decoding with the ends exchanged.
template <const auto &fields>
inline void decode_record(const uint8_t *wire, void *record, auto ntoh_if_index) {
    [&]<size_t... i>(std::index_sequence<i...>) {
        (decode_field<fields[i]>(wire, static_cast<uint8_t *>(record), ntoh_if_index), ...);
    }
    (std::make_index_sequence<fields.size()>{});
}

template <const auto &fields>
inline void encode_record(const void *record, uint8_t *wire, auto hton_if_index) {
    [&]<size_t... i>(std::index_sequence<i...>) {
        (decode_field<record_field{fields[i].member, fields[i].wire, fields[i].kind, fields[i].count}>(
             static_cast<const uint8_t *>(record), wire, hton_if_index),
         ...);
    }
    (std::make_index_sequence<fields.size()>{});
}

}  // namespace pm

#endif
