// SPDX-License-Identifier: Apache-2.0
// heap_meter.h: counts what this process takes from the heap: its malloc is this program's own, over libc's.
#ifndef BENCH_MEMORY_HEAP_METER_H
#define BENCH_MEMORY_HEAP_METER_H

#include <cstddef>

namespace bench {

struct heap_use {
    size_t blocks;         // taken since the start
    size_t bytes_at_most;  // at one time, beyond those at the start
};

// One thread at a time.
void start_heap_meter();
heap_use read_heap_meter();

}  // namespace bench

#endif
