// SPDX-License-Identifier: Apache-2.0
// exchange_calls.h: every function of the library that asks a service something, asked with arguments that are good on
// the switch of examples/chassis/director.toml.
#ifndef TESTS_INTEGRATION_FAULTS_EXCHANGE_CALLS_H
#define TESTS_INTEGRATION_FAULTS_EXCHANGE_CALLS_H

#include <cstdint>
#include <iosfwd>
#include <span>

#include "platform/mts.h"

// The wait that calls over CMI are given, in seconds; the others have their own.
inline constexpr uint32_t cmi_wait = 3;

struct exchange_call {
    const char *name;       // of the function; behind a full stop, what is special about the call
    uint32_t sap;           // of the service that is asked
    uint32_t opcode;        // what it is asked
    uint32_t wait_seconds;  // the longest wait for the answer
    bool asks_line_card;    // not the supervisor
    bool is_cmi;
    bool configures;

    // Asks, looks at the answer, and releases everything. Returns 0, or the first failure: the status of the function,
    // or of the parser that reads its answer.
    uint32_t (*run)(mts_handle_t handle);
};

void PrintTo(const exchange_call &call, std::ostream *out);

// All of them; sends and receives of the send-only functions are one call.
[[nodiscard]] std::span<const exchange_call> exchange_calls();

// What the call returns when its exchange fails with this error number of the transport: most say why.
[[nodiscard]] uint32_t failure_of(const exchange_call &call, uint32_t error);

// The node of the line card that calls with `asks_line_card` ask.
[[nodiscard]] uint32_t asked_line_card();

#endif
