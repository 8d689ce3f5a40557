/* SPDX-License-Identifier: Apache-2.0 */
/* tlv_builder.h: writes the TLV arrays that tlv_array.h reads. In libutils. A builder belongs to one thread.
 *
 * An array is a header of 12 bytes, all in network order: the mark "TLV1", the number of elements, and the number
 * of bytes of all elements. An element is its type and its length, 16 bits each, and the value; in the aligned
 * form zeros follow it up to a multiple of four. No element is type 0 and length 0 at once. */
#ifndef PLATFORM_DEV_TLV_BUILDER_H
#define PLATFORM_DEV_TLV_BUILDER_H

#include "platform/types.h"

/* The longest value of an element, in bytes. */
#define TLV_MAX_VALUE_SIZE 256u

/* The zeroed bytes that must follow an array of unknown origin.
 *
 * A reader is not told where the memory behind an array ends, and the size in the array's header may claim any number
 * of bytes. Zeros are no element, so a walk that came upon them ends with EBADMSG. It can pass them only with an
 * element that begins before they do: their number is what such an element takes at most (4 + TLV_MAX_VALUE_SIZE),
 * its padding (3), and the header of the next one (4), rounded up. The transport puts them behind every payload. */
#define TLV_ZEROED_TAIL_SIZE (TLV_MAX_VALUE_SIZE + 16u)

PLATFORM_BEGIN_DECLS

typedef struct tlv_builder tlv_builder_t;

/* Starts an empty array; `aligned` nonzero makes the aligned form. Returns null when memory ran out. */
tlv_builder_t *tlv_builder_create(int32_t aligned);

/* Adds one element. Returns 0, or -1 when memory ran out, the value is too long, type and length are both 0, or no
 * message could carry the array. */
int32_t tlv_builder_add(tlv_builder_t *builder, uint16_t type, const void *value, uint16_t length);

/* The finished bytes and how many; they stay the builder's and are valid until the next call on it. */
const void *tlv_builder_data(const tlv_builder_t *builder);
uint32_t tlv_builder_size(const tlv_builder_t *builder);

/* The number of elements so far. */
uint32_t tlv_builder_count(const tlv_builder_t *builder);

/* Empties the array and keeps its memory. */
void tlv_builder_reset(tlv_builder_t *builder);

/* Frees the builder. Null is allowed. */
void tlv_builder_destroy(tlv_builder_t *builder);

PLATFORM_END_DECLS

#endif
