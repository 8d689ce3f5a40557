// SPDX-License-Identifier: Apache-2.0
// set_request.h: the payload of a request to set an attribute.
#ifndef PM_CMI_COMMON_SET_REQUEST_H
#define PM_CMI_COMMON_SET_REQUEST_H

#include <span>

#include "port_mgr/types.h"

namespace pm {

struct set_request {
    const char *first_text;   // may be null
    const char *second_text;  // may be null
    uint32_t range_count;
    const pm_if_index_range_t *ranges;
    uint8_t type;
    uint8_t length;
    const void *value;
};

uint64_t size_of(const set_request &request);

// Writes the payload into zeroed bytes, as many as size_of says. Returns the status of the attribute's encoder.
[[nodiscard]] uint32_t write(const set_request &request, std::span<uint8_t> to);

}  // namespace pm

#endif
