// SPDX-License-Identifier: Apache-2.0
// load.h: what clients meet that ask one service at the same time, and how many requests it answers.
#ifndef BENCH_EXCHANGE_LOAD_H
#define BENCH_EXCHANGE_LOAD_H

#include <string>

#include "bench/support/report.h"

namespace bench {

// Sockets go to `directory`.
void measure_load(report &report, const std::string &directory);

}  // namespace bench

#endif
