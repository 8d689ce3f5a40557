/* SPDX-License-Identifier: Apache-2.0 */
/* tlv_builder.h: writes the TLV arrays that tlv_array.h reads. In libutils. A builder belongs to one thread.
 *
 * An array is a header of 12 bytes, all in network order: the mark "TLV1", the number of elements, and the number
 * of bytes of all elements. An element is its type and its length, 16 bits each, and the value; in the aligned
 * form zeros follow it up to a multiple of four. */
#ifndef PLATFORM_DEV_TLV_BUILDER_H
#define PLATFORM_DEV_TLV_BUILDER_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

typedef struct tlv_builder tlv_builder_t;

/* Starts an empty array; `aligned` nonzero makes the aligned form. Returns null when memory ran out. */
tlv_builder_t *tlv_builder_create(int32_t aligned);

/* Adds one element. Returns 0, or -1 when memory ran out. */
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
