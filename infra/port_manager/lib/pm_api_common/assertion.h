// SPDX-License-Identifier: Apache-2.0
// assertion.h: the report that a failed check of an argument or an invariant leaves.
#ifndef PM_API_COMMON_ASSERTION_H
#define PM_API_COMMON_ASSERTION_H

namespace pm {

// Appends a dated record with a backtrace to the assertion log and sends a line to the system log; without a log
// directory, or once the log is full, it does nothing. The caller goes on in every case.
[[gnu::cold, gnu::noinline]] void report_assertion(const char *file, const char *function, int line);

}  // namespace pm

// Reports when the condition does not hold, under the name of the function that it stands in.
#define PM_ASSERT(condition) ((condition) ? static_cast<void>(0) : ::pm::report_assertion(__FILE__, __func__, __LINE__))

#endif
