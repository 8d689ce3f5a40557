// SPDX-License-Identifier: Apache-2.0
// request_payload.h: the bytes of a request.
#ifndef VIRTUAL_SWITCH_SERVICES_REQUEST_PAYLOAD_H
#define VIRTUAL_SWITCH_SERVICES_REQUEST_PAYLOAD_H

#include <span>

#include "platform_dev/mts_service.h"

namespace virtual_switch {

inline std::span<const uint8_t> payload_of(const mts_request_t &request) {
    return {static_cast<const uint8_t *>(request.payload), request.payload_size};
}

}  // namespace virtual_switch

#endif
