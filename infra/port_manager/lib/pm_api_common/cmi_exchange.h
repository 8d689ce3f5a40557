// SPDX-License-Identifier: Apache-2.0
// cmi_exchange.h: one request over CMI, and the owner of its answer.
#ifndef PM_API_COMMON_CMI_EXCHANGE_H
#define PM_API_COMMON_CMI_EXCHANGE_H

#include <span>

#include "platform/types.h"
#include "pm_api_common/heap.h"

namespace pm {

struct cmi_request {
    uint32_t opcode;
    uint32_t kind;
    std::span<const uint8_t> payload;
    uint32_t sap;
};

struct cmi_answer {
    uint32_t status;              // the transport's: 0 when the service answered
    heap_block<uint8_t> payload;  // null when it answered nothing
    uint32_t size;
};

// Sends a request and waits for its answer. `handle` and `last` are the caller's, for the transport.
[[nodiscard]] cmi_answer exchange(const cmi_request &request, mts_handle_t handle, uint32_t last);

}  // namespace pm

#endif
