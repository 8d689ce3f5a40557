// SPDX-License-Identifier: Apache-2.0
// system_call_count.h: how much processes ask of the kernel.
#ifndef BENCH_SUPPORT_SYSTEM_CALL_COUNT_H
#define BENCH_SUPPORT_SYSTEM_CALL_COUNT_H

#include <cstdint>
#include <functional>
#include <vector>

namespace bench {

// Runs each of these in a process of its own, which is stopped at every system call, until the last one has ended.
// Returns how many each has made. No other process may have been forked that is still there.
std::vector<uint64_t> count_system_calls(const std::vector<std::function<void()>> &bodies);

}  // namespace bench

#endif
