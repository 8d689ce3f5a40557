// SPDX-License-Identifier: Apache-2.0
// port_attribute_codec.h: writes the attributes of a port as the elements of an answer.
#ifndef PROTOCOL_PORT_ATTRIBUTE_CODEC_H
#define PROTOCOL_PORT_ATTRIBUTE_CODEC_H

#include <cstring>
#include <span>

#include "protocol/port_info_layout.h"

namespace pm {

// Room for the value of any element.
using attribute_value = std::array<uint8_t, owner_text_size>;

// Writes an attribute into four zeroed bytes, each kind the reverse of how it is taken.
inline void encode_attribute(const port_attribute &attribute, const pm_port_info_t &record, uint8_t *to) {
    const uint8_t *const member = reinterpret_cast<const uint8_t *>(&record) + attribute.member;
    switch (attribute.kind) {
        case attribute_kind::number:
        case attribute_kind::number_held:
            return store_be32(to, load<uint32_t>(member));
        case attribute_kind::number_to_16:
        case attribute_kind::number_to_16_and_held:
            return store_be32(to, load<uint16_t>(member));
        case attribute_kind::number_to_8:
            return store_be32(to, *member);
        case attribute_kind::first_byte:
            return store(to, *member);
        case attribute_kind::first_byte_to_32:
            return store(to, static_cast<uint8_t>(load<uint32_t>(member)));
        case attribute_kind::raw:
            return store(to, load<uint32_t>(member));
        case attribute_kind::text:
        case attribute_kind::ignored:
        case attribute_kind::unknown:
            return;
    }
}

// Writes the value of one element into `value` and returns the bytes of it that travel. `wire_if_index` is the
// index as it starts the base record.
inline std::span<const uint8_t> encode_attribute_value(const port_attribute &attribute, const pm_port_info_t &record,
                                                       uint32_t wire_if_index, attribute_value &value) {
    if (attribute.kind == attribute_kind::text) {
        std::memcpy(value.data(), record.owner, owner_text_size);
        return value;
    }
    store(value.data(), wire_if_index);
    store(value.data() + attribute_offset, uint32_t{0});
    encode_attribute(attribute, record, value.data() + attribute_offset);
    return std::span(value).first(attribute_value_size);
}

}  // namespace pm

#endif
