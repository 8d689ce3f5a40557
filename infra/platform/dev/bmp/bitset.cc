// SPDX-License-Identifier: Apache-2.0
#include "platform/bitset.h"

#include <algorithm>
#include <cstring>

namespace {

// The bytes in use; a size beyond the record's end counts as the whole of it.
uint32_t bytes_in_use(const bitset_t *set) { return std::min<uint32_t>(set->size, sizeof set->bits); }

bool fits(const bitset_t *set, uint32_t number) { return number / 8 < bytes_in_use(set); }

uint8_t mask_of(uint32_t number) { return static_cast<uint8_t>(0x80u >> number % 8); }

}  // namespace

void bitset_clear(bitset_t *set) { memset(set->bits, 0, bytes_in_use(set)); }

void bitset_set_bit(bitset_t *set, uint32_t number) {
    if (fits(set, number)) set->bits[number / 8] = static_cast<uint8_t>(set->bits[number / 8] | mask_of(number));
}

void bitset_set_range(bitset_t *set, uint32_t start, uint32_t count) {
    const uint64_t end = std::min<uint64_t>(uint64_t{start} + count, uint64_t{bytes_in_use(set)} * 8);
    for (uint32_t number = start; number < end; ++number) bitset_set_bit(set, number);
}

int32_t bitset_is_bit_set(const bitset_t *set, uint32_t number) {
    return fits(set, number) && (set->bits[number / 8] & mask_of(number)) != 0;
}
