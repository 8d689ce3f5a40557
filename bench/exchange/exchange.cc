// SPDX-License-Identifier: Apache-2.0
// What a request with its answer costs, beside other ways to exchange the same number of bytes. All processes share one
// core.
#include <cstdlib>

#include "bench/exchange/latency.h"
#include "bench/exchange/load.h"
#include "bench/exchange/system_calls.h"
#include "bench/support/temporary_runtime_dir.h"

int main(int argc, char **argv) {
    bench::pin_to_one_core();
    const bench::temporary_runtime_dir directory;
    bench::report report(argc, argv, "exchange, all processes on one core");
    bench::measure_latency(report, directory.path());
    bench::measure_load(report, directory.path());
    bench::count_system_calls(report, directory.path());
    report.write();
    return EXIT_SUCCESS;
}
