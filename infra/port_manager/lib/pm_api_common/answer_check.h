// SPDX-License-Identifier: Apache-2.0
// answer_check.h: whether an answer holds the records that it counts. Such answers start with a status and a count.
#ifndef PM_API_COMMON_ANSWER_CHECK_H
#define PM_API_COMMON_ANSWER_CHECK_H

#include "protocol/byte_order.h"
#include "protocol/port_info_layout.h"

namespace pm {

inline uint32_t status_of(const uint8_t *payload) { return load_be32(payload); }
inline uint32_t count_of(const uint8_t *payload) { return load_be32(payload + answer_status_size); }

// `size` bytes hold the header and all records that it counts.
inline bool holds_records(const uint8_t *payload, uint64_t size, size_t record_size) {
    return size >= answer_header_size && answer_header_size + uint64_t{count_of(payload)} * record_size <= size;
}

}  // namespace pm

#endif
