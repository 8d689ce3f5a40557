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

inline uint32_t load_be32(const uint8_t *from) {
    uint32_t wire;
    memcpy(&wire, from, sizeof wire);
    return ntohl(wire);
}

inline void store_be32(uint8_t *to, uint32_t value) {
    const uint32_t wire = htonl(value);
    memcpy(to, &wire, sizeof wire);
}

// What no builder makes is no element; zeros are none.
inline bool is_tlv_element(uint16_t type, uint16_t length) {
    return length <= TLV_MAX_VALUE_SIZE && (type | length) != 0;
}

// The bytes that an element takes: its header, its value and, in the aligned form, the zeros behind it.
inline uint32_t tlv_element_size(uint16_t length, bool aligned) {
    const uint32_t size = tlv_element_header_size + length;
    return aligned ? (size + tlv_array_alignment - 1) & ~(tlv_array_alignment - 1) : size;
}

}  // namespace platform_dev

#endif
