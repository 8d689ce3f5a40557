// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/heap.h"

#include <cstdio>

namespace pm {

void *allocate(uint64_t size, uint64_t limit, const char *file, int line) {
    void *const block = size <= limit ? std::malloc(static_cast<size_t>(size)) : nullptr;
    if (block == nullptr) {
        std::printf("(Error) Malloc Failure in %s[%d] for size %d\n", file, line, static_cast<int>(size));
    }
    return block;
}

uint32_t report_no_memory(const char *function, uint64_t size) {
    std::printf("%s: malloc failure, size(%d)\n", function, static_cast<int>(size));
    return out_of_memory;
}

}  // namespace pm
