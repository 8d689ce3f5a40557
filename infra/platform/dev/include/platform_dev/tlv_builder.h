/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_dev_tlv_builder tlv_builder.h: writing arrays of elements
 * @ingroup platform_dev
 * @brief Writes the TLV arrays that tlv_array.h reads. In libutils.
 *
 * An array is a header of 12 bytes, all in network order: the mark "TLV1", the number of elements, and the number
 * of bytes of all elements. An element is its type and its length, 16 bits each, and the value; in the aligned
 * form zeros follow it up to a multiple of four. No element is type 0 and length 0 at once.
 *
 * A builder belongs to one thread.
 * @{
 */
#ifndef PLATFORM_DEV_TLV_BUILDER_H
#define PLATFORM_DEV_TLV_BUILDER_H

#include "platform/types.h"

/** The longest value of an element, in bytes. */
#define TLV_MAX_VALUE_SIZE 256u

/**
 * The zeroed bytes that must follow an array of unknown origin.
 *
 * A reader is not told where the memory behind an array ends, and the size in the array's header may claim any number
 * of bytes. Zeros are no element, so a walk that came upon them ends with EBADMSG. It can pass them only with an
 * element that begins before they do: their number is what such an element takes at most (4 + TLV_MAX_VALUE_SIZE),
 * its padding (3), and the header of the next one (4), rounded up. The transport puts them behind every payload.
 */
#define TLV_ZEROED_TAIL_SIZE (TLV_MAX_VALUE_SIZE + 16u)

PLATFORM_BEGIN_DECLS

/** An array under construction. */
typedef struct tlv_builder tlv_builder_t;

/**
 * Starts an empty array.
 *
 * @param[in] aligned  Nonzero makes the aligned form.
 * @return The builder, the caller's to free with tlv_builder_destroy(), or null when memory ran out.
 */
tlv_builder_t *tlv_builder_create(int32_t aligned);

/**
 * Adds one element.
 *
 * @param[in,out] builder  The builder.
 * @param[in]     type     The element's type.
 * @param[in]     value    Its value, which is copied.
 * @param[in]     length   The bytes of the value.
 * @return 0, or -1 when memory ran out, the value is too long, type and length are both 0, or no message could carry
 *     the array.
 */
int32_t tlv_builder_add(tlv_builder_t *builder, uint16_t type, const void *value, uint16_t length);

/**
 * Tells where the finished bytes are.
 *
 * @param[in] builder  The builder.
 * @return The bytes, which stay the builder's and are valid until the next call on it.
 */
const void *tlv_builder_data(const tlv_builder_t *builder);

/**
 * Tells how many bytes tlv_builder_data() points at.
 *
 * @param[in] builder  The builder.
 * @return Their number.
 */
uint32_t tlv_builder_size(const tlv_builder_t *builder);

/**
 * Tells how many elements the array has so far.
 *
 * @param[in] builder  The builder.
 * @return Their number.
 */
uint32_t tlv_builder_count(const tlv_builder_t *builder);

/**
 * Empties the array and keeps its memory.
 *
 * @param[in,out] builder  The builder.
 */
void tlv_builder_reset(tlv_builder_t *builder);

/**
 * Frees a builder.
 *
 * @param[in] builder  The builder, or null.
 */
void tlv_builder_destroy(tlv_builder_t *builder);

PLATFORM_END_DECLS

/** @} */
#endif
