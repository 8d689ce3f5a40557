/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_bitset bitset.h: sets of small numbers
 * @ingroup platform
 * @brief Sets of small numbers, in libbmp.
 *
 * Every function takes the set first. A number or a range that does not fit into it is cut to what fits. A set belongs
 * to one thread at a time.
 * @{
 */
#ifndef PLATFORM_BITSET_H
#define PLATFORM_BITSET_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** A set of the numbers that have a bit in it. */
typedef struct bitset {
    uint32_t size;     /**< bytes of `bits` in use, at most 512 */
    uint8_t bits[512]; /**< bit n is bit (7 - n mod 8) of byte n / 8 */
} bitset_t;

/** Clears every bit. The size stays. */
void bitset_clear(bitset_t *);

/**
 * Sets one bit.
 *
 * @param[in] number  The bit's number.
 */
void bitset_set_bit(bitset_t *, uint32_t number);

/**
 * Sets the bits from `start` to `start` + `count` - 1.
 *
 * @param[in] start  The first number.
 * @param[in] count  How many numbers.
 */
void bitset_set_range(bitset_t *, uint32_t start, uint32_t count);

/**
 * Tells whether a bit is set.
 *
 * @param[in] number  The bit's number.
 * @return Nonzero when it is.
 */
int32_t bitset_is_bit_set(const bitset_t *, uint32_t number);

PLATFORM_END_DECLS

/** @} */
#endif
