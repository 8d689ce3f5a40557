// SPDX-License-Identifier: Apache-2.0
// The bytes of a TLV array, for its reader and its builder.
#ifndef PLATFORM_DEV_UTILS_TLV_ARRAY_FORMAT_H
#define PLATFORM_DEV_UTILS_TLV_ARRAY_FORMAT_H

#include <arpa/inet.h>

#include <cstdint>
#include <cstring>

#include "platform_dev/tlv_builder.h"

namespace platform_dev {

inline constexpr uint32_t tlv_array_mark = 0x544c5631;  // "TLV1"
inline constexpr uint32_t tlv_array_header_size = 12;
inline constexpr uint32_t tlv_array_count_offset = 4;
inline constexpr uint32_t tlv_array_bytes_offset = 8;
inline constexpr uint32_t tlv_element_header_size = 4;
inline constexpr uint32_t tlv_array_alignment = 4;
static_assert(tlv_element_header_size % tlv_array_alignment == 0);

inline uint32_t load_be32(const uint8_t *from) {
    uint32_t wire;
    memcpy(&wire, from, sizeof wire);
    return ntohl(wire);
}

inline void store_be32(uint8_t *to, uint32_t value) {
    const uint32_t wire = htonl(value);
    memcpy(to, &wire, sizeof wire);
}

// The first word of an element.
inline uint32_t type_and_length(uint16_t type, uint16_t length) { return uint32_t{type} << 16 | length; }

// What no builder makes is no element; zeros are none.
inline bool is_tlv_element(uint32_t type_and_length) {
    if (type_and_length == 0) [[unlikely]]
        return false;
    return (type_and_length & UINT16_MAX) <= TLV_MAX_VALUE_SIZE;
}

// The bytes behind an element's header: its value and, in the aligned form, the zeros behind it.
inline uint32_t tlv_value_size(uint16_t length, bool aligned) {
    return aligned ? (uint32_t{length} + tlv_array_alignment - 1) & ~(tlv_array_alignment - 1) : length;
}

}  // namespace platform_dev

#endif
