// SPDX-License-Identifier: Apache-2.0
// answer_check.h: whether an answer holds the records that it counts. Such answers start with a status and a count.
#ifndef PM_API_COMMON_ANSWER_CHECK_H
#define PM_API_COMMON_ANSWER_CHECK_H

#include "port_mgr/status.h"
#include "protocol/byte_order.h"
#include "protocol/port_info_layout.h"

namespace pm {

inline uint32_t status_of(const uint8_t *payload) { return load_be32(payload); }
inline uint32_t count_of(const uint8_t *payload) { return load_be32(payload + answer_status_size); }

// `size` bytes hold the header and all records that it counts.
inline bool holds_records(const uint8_t *payload, uint64_t size, size_t record_size) {
    return size >= answer_header_size && answer_header_size + uint64_t{count_of(payload)} * record_size <= size;
}

// 0 when `size` bytes hold the header and all records that it counts; else the service's status, behind which nothing
// need follow, or that of a malformed answer.
inline uint32_t check_answer(const uint8_t *payload, uint64_t size, size_t record_size) {
    if (payload == nullptr || size < answer_status_size) return PM_ERR_INVALID_PARAM;
    if (status_of(payload) != 0) return status_of(payload);
    return holds_records(payload, size, record_size) ? 0 : PM_ERR_INVALID_PARAM;
}

}  // namespace pm

#endif
