// SPDX-License-Identifier: Apache-2.0
// exported_calls.h: every function of the library that asks no service: those that read what a service answered, those
// that look something up in the platform or the system, and those that only compute.
#ifndef TESTS_INTEGRATION_FAULTS_EXPORTED_CALLS_H
#define TESTS_INTEGRATION_FAULTS_EXPORTED_CALLS_H

#include <iosfwd>
#include <span>

#include "platform/mts.h"

// What services of the switch answered, for the functions that read it.
struct received_answers {
    mts_msg_t ports;
    mts_msg_t ports_in_brief;
    mts_msg_t next_port;
    mts_msg_t transceivers;  // an answer with one record, as pm_parse_fcot_info takes it
};

struct exported_call {
    const char *name;  // of the function; behind a full stop, what is special about the call
    bool allocates;    // itself, or the C library on its behalf

    // Calls, looks at what came out, and releases it. Returns whether the call was good. One that ran out of memory is
    // not, and left its outputs as its header says.
    bool (*run)(const received_answers &answers);
};

void PrintTo(const exported_call &call, std::ostream *out);

// Those that read answers.
[[nodiscard]] std::span<const exported_call> reading_calls();

// All others.
[[nodiscard]] std::span<const exported_call> local_calls();

#endif
