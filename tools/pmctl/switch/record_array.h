// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_SWITCH_RECORD_ARRAY_H
#define PMCTL_SWITCH_RECORD_ARRAY_H

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

namespace pmctl {

struct free_block {
    void operator()(void *block) const { free(block); }
};

// An array of records as the library hands it out: one block, freed once.
template <typename Record>
struct record_array {
    std::unique_ptr<Record[], free_block> records;
    uint32_t count = 0;

    [[nodiscard]] std::span<const Record> all() const { return {records.get(), records == nullptr ? 0 : count}; }
};

}  // namespace pmctl

#endif
