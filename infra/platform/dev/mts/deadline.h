// SPDX-License-Identifier: Apache-2.0
// deadline.h: the end of a wait.
#ifndef PLATFORM_DEV_MTS_DEADLINE_H
#define PLATFORM_DEV_MTS_DEADLINE_H

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdint>

namespace platform_dev {

class deadline {
  public:
    explicit deadline(uint32_t seconds) : end_(clock::now() + std::chrono::seconds(seconds)) {}

    // Waits until one of the descriptors is ready. Returns 0, ETIMEDOUT or EINTR.
    [[nodiscard]] int wait(pollfd *descriptors, nfds_t count) const {
        for (;;) {
            const int remaining = remaining_milliseconds();
            const int ready = poll(descriptors, count, remaining);
            if (ready != 0) return ready > 0 ? 0 : errno;
            if (remaining == 0) return ETIMEDOUT;
        }
    }

  private:
    using clock = std::chrono::steady_clock;

    [[nodiscard]] int remaining_milliseconds() const {
        const auto remaining = std::chrono::ceil<std::chrono::milliseconds>(end_ - clock::now()).count();
        return static_cast<int>(std::clamp<int64_t>(remaining, 0, INT_MAX));
    }

    clock::time_point end_;
};

}  // namespace platform_dev

#endif
