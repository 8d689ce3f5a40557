// SPDX-License-Identifier: Apache-2.0
// latency.h: how long one exchange takes.
#ifndef BENCH_EXCHANGE_LATENCY_H
#define BENCH_EXCHANGE_LATENCY_H

#include <string>

#include "bench/support/report.h"

namespace bench {

// Sockets go to `directory`.
void measure_latency(report &report, const std::string &directory);

}  // namespace bench

#endif
