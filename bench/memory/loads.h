// SPDX-License-Identifier: Apache-2.0
// loads.h: what loading the library takes, in time and in memory.
#ifndef BENCH_MEMORY_LOADS_H
#define BENCH_MEMORY_LOADS_H

#include "bench/support/report.h"

namespace bench {

void measure_load_time(report &report);
void measure_resident_size(report &report);

}  // namespace bench

#endif
