// SPDX-License-Identifier: Apache-2.0
// switch_clock.h: how long the switch has been running. Counters advance and readings drift by it.
#ifndef VIRTUAL_SWITCH_CHASSIS_SWITCH_CLOCK_H
#define VIRTUAL_SWITCH_CHASSIS_SWITCH_CLOCK_H

#include <chrono>
#include <functional>

namespace virtual_switch {

using switch_time = std::chrono::milliseconds;
using switch_clock = std::function<switch_time()>;

// A clock that starts at 0 now.
inline switch_clock started_clock() {
    return [start = std::chrono::steady_clock::now()] {
        return std::chrono::duration_cast<switch_time>(std::chrono::steady_clock::now() - start);
    };
}

}  // namespace virtual_switch

#endif
