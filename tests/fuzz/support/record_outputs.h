// SPDX-License-Identifier: Apache-2.0
// record_outputs.h: what a parser of records may do to its outputs.
#ifndef FUZZ_SUPPORT_RECORD_OUTPUTS_H
#define FUZZ_SUPPORT_RECORD_OUTPUTS_H

#include <cstring>

#include "support/fuzz.h"

namespace fuzz {

// What a failure leaves in the outputs.
enum class failed_outputs : uint8_t { as_they_were, empty };

// Reads every byte of an array, so that the sanitizer sees whether it has as many records as it says.
template <typename Record>
void touch(const Record *records, uint32_t count) {
    volatile uint8_t sum = 0;
    const auto *const all = reinterpret_cast<const uint8_t *>(records);
    for (size_t i = 0; i < size_t{count} * sizeof(Record); ++i) sum = static_cast<uint8_t>(sum + all[i]);
}

// Calls a parser of a payload of `size` bytes: a success gives no more records than the payload holds on the wire.
template <typename Record>
void check_records(size_t size, size_t wire_size, failed_outputs on_failure, auto parse) {
    constexpr uint32_t count_before = 0x5a5a5a5a;
    Record before;
    uint32_t count = count_before;
    Record *records = &before;
    if (parse(&count, &records) == 0) {
        FUZZ_REQUIRE(8 + uint64_t{count} * wire_size <= size);
        touch(records, count);
        return std::free(records);
    }
    const bool is_empty = on_failure == failed_outputs::empty;
    FUZZ_REQUIRE(count == (is_empty ? 0 : count_before));
    FUZZ_REQUIRE(records == (is_empty ? nullptr : &before));
}

}  // namespace fuzz

#endif
