// SPDX-License-Identifier: Apache-2.0
// strings.h: every function of the library that turns a value into a text.
#ifndef BENCH_TEXT_STRINGS_H
#define BENCH_TEXT_STRINGS_H

#include "bench/support/report.h"

namespace bench {

// Times each over the values that it knows.
void measure_strings(report &report);

}  // namespace bench

#endif
