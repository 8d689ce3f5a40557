// SPDX-License-Identifier: Apache-2.0
// byte_order.h: reads and writes unaligned numbers. The wire is big-endian.
#ifndef PROTOCOL_BYTE_ORDER_H
#define PROTOCOL_BYTE_ORDER_H

#include <bit>
#include <cstdint>
#include <cstring>

namespace pm {

// A number as it lies in memory.
template <typename Number>
inline Number load(const void *from) {
    Number value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <typename Number>
inline void store(void *to, Number value) {
    std::memcpy(to, &value, sizeof value);
}

constexpr uint16_t swap_be16(uint16_t value) {
    return std::endian::native == std::endian::big ? value : __builtin_bswap16(value);
}

constexpr uint32_t swap_be32(uint32_t value) {
    return std::endian::native == std::endian::big ? value : __builtin_bswap32(value);
}

constexpr uint64_t swap_be64(uint64_t value) {
    return std::endian::native == std::endian::big ? value : __builtin_bswap64(value);
}

inline uint16_t load_be16(const void *from) { return swap_be16(load<uint16_t>(from)); }
inline uint32_t load_be32(const void *from) { return swap_be32(load<uint32_t>(from)); }
inline uint64_t load_be64(const void *from) { return swap_be64(load<uint64_t>(from)); }
inline void store_be16(void *to, uint16_t value) { store(to, swap_be16(value)); }
inline void store_be32(void *to, uint32_t value) { store(to, swap_be32(value)); }
inline void store_be64(void *to, uint64_t value) { store(to, swap_be64(value)); }

}  // namespace pm

#endif
