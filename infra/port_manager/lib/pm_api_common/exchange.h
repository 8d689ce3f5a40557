// SPDX-License-Identifier: Apache-2.0
// exchange.h: what every exchange over the message transport does alike.
#ifndef PM_API_COMMON_EXCHANGE_H
#define PM_API_COMMON_EXCHANGE_H

#include "platform/mts.h"

namespace pm {

inline constexpr int32_t transport_failure = -1;

// How long the library's own queries wait, in seconds.
inline constexpr uint32_t query_wait = 10;

// Options that receive the answer to `request` and nothing else.
mts_recv_options_t answer_to(const mts_msg_t &request, uint32_t wait);

// Ends a query that was sent: receives its answer, and releases the request in every case. Returns 0 or the
// transport's error number; that of a failed release wins.
[[nodiscard]] uint32_t receive_answer(mts_handle_t handle, mts_msg_t &request, mts_msg_t *response);

}  // namespace pm

#endif
