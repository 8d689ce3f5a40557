// SPDX-License-Identifier: Apache-2.0
// The platform's sets of bits: they do what is asked, and log it.
#include <fmt/format.h>

#include <cstring>

#include "call_log.h"
#include "platform/bitset.h"

using support::call_log::add;

void bitset_clear(bitset_t *set) {
    add(fmt::format("bitset_clear(size {})", set->size));
    std::memset(set->bits, 0, sizeof set->bits);
}

void bitset_set_bit(bitset_t *set, uint32_t number) {
    add(fmt::format("bitset_set_bit({})", number));
    if (number / 8 >= sizeof set->bits) return;
    set->bits[number / 8] = static_cast<uint8_t>(set->bits[number / 8] | 0x80 >> number % 8);
}
