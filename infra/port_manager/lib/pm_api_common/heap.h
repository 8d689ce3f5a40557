// SPDX-License-Identifier: Apache-2.0
// heap.h: memory from the system allocator, which is what callers free.
#ifndef PM_API_COMMON_HEAP_H
#define PM_API_COMMON_HEAP_H

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace pm {

struct free_block {
    void operator()(void *block) const { std::free(block); }
};

// The owner of a block until it is handed to the caller.
template <typename Content>
using heap_block = std::unique_ptr<Content, free_block>;

// A request's size travels in 32 bits; an array's must fit in the address space.
inline constexpr uint64_t largest_request = UINT32_MAX;
inline constexpr uint64_t largest_array = PTRDIFF_MAX;

// What functions return when memory ran out.
inline constexpr uint32_t out_of_memory = 1;

// Allocates `size` bytes. On failure, or when `size` is above `limit`, names the place on standard output and returns
// null.
[[nodiscard]] void *allocate(uint64_t size, uint64_t limit, const char *file, int line);

// Names the function whose request could not be allocated, after the place. Returns out_of_memory.
uint32_t report_no_memory(const char *function, uint64_t size);

}  // namespace pm

#define PM_ALLOCATE(size, limit) ::pm::allocate((size), (limit), __FILE__, __LINE__)

#endif
