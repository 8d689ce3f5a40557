/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_tlv_array tlv_array.h: arrays of elements
 * @ingroup platform
 * @brief Arrays of type-length-value elements, in libutils.
 *
 * The aligned form pads every element; otherwise both are read alike. An array need not be aligned, and its first 12
 * bytes must be readable. No function is told where the memory behind an array ends: whoever hands one over vouches for
 * the size in its header, to which elements are held, or for the zeroed bytes behind it, which are no elements: arrays
 * in received payloads have them. Reading is thread-safe.
 * @{
 */
#ifndef PLATFORM_TLV_ARRAY_H
#define PLATFORM_TLV_ARRAY_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/**
 * Tells how many elements an array has. The second argument is 1.
 *
 * @param[in] array  The array.
 * @return The number of elements; 0 for what is no array.
 */
uint32_t tlv_array_get_num_tlvs(const void *array, uint32_t);

/**
 * Tells how many elements an array of the aligned form has. The second argument is 1.
 *
 * @param[in] array  The array.
 * @return The number of elements; 0 for what is no array.
 */
uint32_t tlv_aligned_array_get_num_tlvs(const void *array, uint32_t);

/**
 * Reads the next element of an array. The fifth argument is 1.
 *
 * @param[in]     array     The array.
 * @param[out]    type      The element's type, host order.
 * @param[out]    length    The bytes of its value, host order.
 * @param[out]    value     Where its value is inside the array, not aligned.
 * @param[in,out] position  0 before the first call of a walk; moved on by each call that succeeds.
 * @return 0, ENODATA behind the last element, or EBADMSG for what is no array and for an element that does not fit it;
 *     a call that fails stores nothing.
 */
uint32_t tlv_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value, uint32_t,
                                uint32_t *position);

/**
 * Reads the next element of an array of the aligned form. The fifth argument is 1.
 *
 * @copydetails tlv_array_get_next_tlv
 */
uint32_t tlv_aligned_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value,
                                        uint32_t, uint32_t *position);

PLATFORM_END_DECLS

/** @} */
#endif
