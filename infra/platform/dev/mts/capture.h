// SPDX-License-Identifier: Apache-2.0
// capture.h: records the messages of this process in the file that MTS_CAPTURE names; docs/capture.md says how.
//
// The variable is read once, with the first message; programs that run with more rights than their user ignore it. A
// process that cannot record says so on standard error and goes on without.
#ifndef PLATFORM_DEV_MTS_CAPTURE_H
#define PLATFORM_DEV_MTS_CAPTURE_H

#include <atomic>

#include "mts/payload.h"

namespace platform_dev {

// The service that a connection leads to.
struct capture_point {
    uint32_t node;
    uint32_t sap;
};

namespace detail {

enum class capture_state : uint8_t { unknown, off, on };

inline std::atomic<capture_state> current_capture_state{capture_state::unknown};

[[nodiscard]] int send_and_record(const capture_point &at, int socket, const frame_header &header, const void *payload);
void record_received(const capture_point &at, int socket, const received_frame &frame);

}  // namespace detail

// Whether messages are recorded, or it is not known yet.
[[nodiscard]] inline bool may_capture() {
    return detail::current_capture_state.load(std::memory_order_relaxed) != detail::capture_state::off;
}

// send_frame, recorded when it succeeds.
[[nodiscard]] inline int send_captured(const capture_point &at, int socket, const frame_header &header,
                                       const void *payload) {
    if (may_capture()) [[unlikely]]
        return detail::send_and_record(at, socket, header, payload);
    return send_frame(socket, header, payload);
}

// Records a frame that came in over `socket`.
inline void capture_received(const capture_point &at, int socket, const received_frame &frame) {
    if (may_capture()) [[unlikely]]
        detail::record_received(at, socket, frame);
}

}  // namespace platform_dev

#endif
