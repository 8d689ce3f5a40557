// SPDX-License-Identifier: Apache-2.0
// fuzz.h: what every fuzz target needs.
#ifndef FUZZ_SUPPORT_FUZZ_H
#define FUZZ_SUPPORT_FUZZ_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>

// The entry that libFuzzer calls with every input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace fuzz {

using bytes = std::span<const uint8_t>;

[[noreturn]] inline void fail(const char *expectation, const char *file, int line) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, expectation);
    std::abort();
}

}  // namespace fuzz

// Ends the run with a report when the expectation does not hold.
#define FUZZ_REQUIRE(expectation) ((expectation) ? void() : ::fuzz::fail(#expectation, __FILE__, __LINE__))

#endif
