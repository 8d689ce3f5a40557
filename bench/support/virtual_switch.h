// SPDX-License-Identifier: Apache-2.0
// virtual_switch.h: a virtual switch that runs as long as the benchmark wants it to.
#ifndef BENCH_SUPPORT_VIRTUAL_SWITCH_H
#define BENCH_SUPPORT_VIRTUAL_SWITCH_H

#include <unistd.h>

#include <array>

#include "bench/support/child_process.h"

namespace bench {

// Starts the program for a chassis file, in the run-time directory of the environment, and waits until it says that it
// is ready.
inline child_process start_virtual_switch(const char *program, const char *chassis) {
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "pipe");
    child_process daemon([&] {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        execl(program, program, chassis, nullptr);
    });
    close(ends[1]);
    char ready = 0;
    require(read(ends[0], &ready, 1) == 1, program);
    close(ends[0]);
    return daemon;
}

}  // namespace bench

#endif
