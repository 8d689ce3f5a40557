// SPDX-License-Identifier: Apache-2.0
#include "bench/memory/heap_meter.h"

#include <malloc.h>

#include <algorithm>
#include <cstdint>

extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);
void __libc_free(void *block);
}

namespace {

int64_t bytes_now;
int64_t bytes_at_most;
size_t blocks;

void *taken(void *block) {
    bytes_now += static_cast<int64_t>(malloc_usable_size(block));
    bytes_at_most = std::max(bytes_at_most, bytes_now);
    ++blocks;
    return block;
}

void given_back(void *block) { bytes_now -= static_cast<int64_t>(malloc_usable_size(block)); }

}  // namespace

extern "C" {

void *malloc(size_t size) noexcept { return taken(__libc_malloc(size)); }

void *calloc(size_t count, size_t size) noexcept { return taken(__libc_calloc(count, size)); }

void *realloc(void *block, size_t size) noexcept {
    given_back(block);
    return taken(__libc_realloc(block, size));
}

void free(void *block) noexcept {
    given_back(block);
    __libc_free(block);
}
}

namespace bench {

void start_heap_meter() {
    bytes_now = 0;
    bytes_at_most = 0;
    blocks = 0;
}

heap_use read_heap_meter() { return {blocks, static_cast<size_t>(bytes_at_most)}; }

}  // namespace bench
