// SPDX-License-Identifier: Apache-2.0
// Callers visit every element once for every port of a response, so a step is a few loads and compares.
#include "platform/tlv_array.h"

#include <cerrno>

#include "platform_dev/mts_dev.h"
#include "tlv_array_format.h"

namespace platform_dev {
namespace {

uint32_t element_count(const void *array) {
    const auto *const header = static_cast<const uint8_t *>(array);
    if (load_be32(header) != tlv_array_mark) return 0;
    const uint32_t count = load_be32(header + tlv_array_count_offset);
    const uint32_t bytes = load_be32(header + tlv_array_bytes_offset);
    // A count that no message could hold would keep callers busy for nothing.
    return bytes <= MTS_MAX_PAYLOAD && count <= bytes / tlv_element_header_size ? count : 0;
}

template <bool aligned>
uint32_t next_element(const void *array, uint16_t *type, uint16_t *length, const void **value, uint32_t *position) {
    const auto *const header = static_cast<const uint8_t *>(array);
    if (load_be32(header) != tlv_array_mark) [[unlikely]]
        return EBADMSG;
    const uint32_t bytes = load_be32(header + tlv_array_bytes_offset);
    const uint32_t at = *position;
    if (at >= bytes) [[unlikely]]
        return ENODATA;
    const uint32_t rest = bytes - at;
    if (rest < tlv_element_header_size) [[unlikely]]
        return EBADMSG;
    const uint8_t *const element = header + tlv_array_header_size + at;
    const uint32_t word = load_be32(element);
    if (!is_tlv_element(word)) [[unlikely]]
        return EBADMSG;
    const auto value_length = static_cast<uint16_t>(word);
    const uint32_t value_size = tlv_value_size(value_length, aligned);
    if (value_size > rest - tlv_element_header_size) [[unlikely]]
        return EBADMSG;
    *position = at + tlv_element_header_size + value_size;
    *type = static_cast<uint16_t>(word >> 16);
    *length = value_length;
    *value = element + tlv_element_header_size;
    return 0;
}

}  // namespace
}  // namespace platform_dev

using namespace platform_dev;

uint32_t tlv_array_get_num_tlvs(const void *array, uint32_t) { return element_count(array); }

uint32_t tlv_aligned_array_get_num_tlvs(const void *array, uint32_t) { return element_count(array); }

uint32_t tlv_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value, uint32_t,
                                uint32_t *position) {
    return next_element<false>(array, type, length, value, position);
}

uint32_t tlv_aligned_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value,
                                        uint32_t, uint32_t *position) {
    return next_element<true>(array, type, length, value, position);
}
