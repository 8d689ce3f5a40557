// SPDX-License-Identifier: Apache-2.0
// naive_bytes.h: numbers from the wire, put together byte by byte, and the numbers that services and library agree on.
#ifndef MODEL_NAIVE_BYTES_H
#define MODEL_NAIVE_BYTES_H

#include <cstdint>

namespace model {

// What the platform lays over every interface index on its way to and from the wire.
inline constexpr uint32_t wire_mask = 0x5a00005a;

inline constexpr uint32_t failure = 0x40290000;
inline constexpr uint32_t invalid_parameter = 0x40290003;
inline constexpr uint32_t attribute_error = 0x40290004;
inline constexpr uint32_t no_payload = 0x40290005;
inline constexpr uint32_t rejected = 0x40290009;
inline constexpr uint32_t invalid_range = 0x4029000a;

inline uint16_t number16(const uint8_t *at) { return static_cast<uint16_t>(at[0] * 256 + at[1]); }

inline uint32_t number32(const uint8_t *at) { return at[0] * 16777216U + at[1] * 65536U + at[2] * 256U + at[3]; }

inline uint64_t number64(const uint8_t *at) { return number32(at) * 4294967296U + number32(at + 4); }

inline uint32_t if_index(const uint8_t *at) { return number32(at) ^ wire_mask; }

// Four bytes as they came, on a host whose least significant byte lies first.
inline uint32_t as_it_came(const uint8_t *at) { return at[3] * 16777216U + at[2] * 65536U + at[1] * 256U + at[0]; }

}  // namespace model

#endif
