/* SPDX-License-Identifier: Apache-2.0 */
/* bitset.h: sets of small numbers, in libbmp. */
#ifndef PLATFORM_BITSET_H
#define PLATFORM_BITSET_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/* `size` is the number of bytes of bits in use, at most 512. Bit n is bit (7 - n mod 8) of byte n / 8. A number
 * or a range that does not fit is cut to what fits. */
typedef struct bitset {
    uint32_t size;
    uint8_t bits[512];
} bitset_t;

/* Clears every bit. The size stays. */
void bitset_clear(bitset_t *);

/* Sets one bit. */
void bitset_set_bit(bitset_t *, uint32_t number);

/* Sets the bits from `start` to `start` + `count` - 1. */
void bitset_set_range(bitset_t *, uint32_t start, uint32_t count);

/* Nonzero when the bit is set. */
int32_t bitset_is_bit_set(const bitset_t *, uint32_t number);

PLATFORM_END_DECLS

#endif
