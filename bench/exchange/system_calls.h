// SPDX-License-Identifier: Apache-2.0
// system_calls.h: how many system calls one exchange takes.
#ifndef BENCH_EXCHANGE_SYSTEM_CALLS_H
#define BENCH_EXCHANGE_SYSTEM_CALLS_H

#include <string>

#include "bench/support/report.h"

namespace bench {

// Sockets go to `directory`.
void count_system_calls(report &report, const std::string &directory);

}  // namespace bench

#endif
