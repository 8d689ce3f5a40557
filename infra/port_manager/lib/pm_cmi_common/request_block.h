// SPDX-License-Identifier: Apache-2.0
// request_block.h: the payload of a configuration request.
#ifndef PM_CMI_COMMON_REQUEST_BLOCK_H
#define PM_CMI_COMMON_REQUEST_BLOCK_H

#include <cstring>
#include <span>

#include "pm_api_common/heap.h"

namespace pm {

// A zeroed payload, or nothing when there was no memory for it.
struct request_block {
    heap_block<uint8_t> block;
    size_t size = 0;

    explicit operator bool() const { return block != nullptr; }
    [[nodiscard]] std::span<uint8_t> bytes() const { return {block.get(), size}; }
};

inline request_block zeroed_request(void *block, uint64_t size) {
    if (block == nullptr) return {};
    const auto bytes = static_cast<size_t>(size);
    std::memset(block, 0, bytes);
    return {heap_block<uint8_t>(static_cast<uint8_t *>(block)), bytes};
}

}  // namespace pm

// The macro names the place in the report of a failure.
#define PM_ALLOCATE_REQUEST(size) ::pm::zeroed_request(PM_ALLOCATE((size), ::pm::largest_request), (size))

#endif
