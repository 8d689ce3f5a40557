// SPDX-License-Identifier: Apache-2.0
// request_calls.h: the calls that requests and blocking queries are made of, as the log shows them.
#ifndef UNIT_PORT_MGR_REQUEST_CALLS_H
#define UNIT_PORT_MGR_REQUEST_CALLS_H

#include <string>
#include <vector>

#include "bytes.h"
#include "platform/types.h"

namespace unit {

inline constexpr mts_handle_t handle = 0x55667788;

using calls = std::vector<std::string>;

inline calls operator+(calls first, const calls &second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

inline const std::string asked_error = "mts_errno_get(0x55667788)";
inline const std::string asked_token = "mts_rr_token_get(message 0x7001)";
inline const std::string received = "mts_recv(0x55667788, 0x1 0x0 0xa 0x7001 0x0 0x0 0x0 0x0 0x0)";
inline const std::string dropped = "mts_drop(0x55667788, message 0x7001)";

// A send to the supervisor.
inline std::string sent(uint32_t sap, uint32_t opcode, const support::bytes &request) {
    return "mts_send(0x55667788, 0xfe000000, " + std::to_string(sap) + ", " + std::to_string(opcode) + ", <" +
           support::hex(request) + ">, " + std::to_string(request.size()) + ", 0, 0)";
}

}  // namespace unit

#endif
