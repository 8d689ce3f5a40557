// SPDX-License-Identifier: Apache-2.0
// The platform's sets of bits: they do what is asked, and log it.
#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "call_log.h"
#include "platform/bitset.h"

using support::call_log::add;

namespace {

void set_one(bitset_t *bits, uint64_t number) {
    if (number / 8 >= sizeof bits->bits) return;
    bits->bits[number / 8] = static_cast<uint8_t>(bits->bits[number / 8] | 0x80 >> number % 8);
}

}  // namespace

void bitset_clear(bitset_t *set) {
    add(fmt::format("bitset_clear(size {})", set->size));
    std::memset(set->bits, 0, sizeof set->bits);
}

void bitset_set_bit(bitset_t *set, uint32_t number) {
    add(fmt::format("bitset_set_bit({})", number));
    set_one(set, number);
}

void bitset_set_range(bitset_t *set, uint32_t start, uint32_t count) {
    add(fmt::format("bitset_set_range({}, {})", start, count));
    const uint64_t end = std::min<uint64_t>(uint64_t{start} + count, 8 * sizeof set->bits);
    for (uint64_t number = start; number < end; ++number) set_one(set, number);
}

int32_t bitset_is_bit_set(const bitset_t *set, uint32_t number) {
    add(fmt::format("bitset_is_bit_set({})", number));
    // An answer that is not 1, since any number but 0 means yes.
    return number / 8 < sizeof set->bits && (set->bits[number / 8] & 0x80 >> number % 8) != 0 ? 2 : 0;
}
