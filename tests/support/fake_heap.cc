// SPDX-License-Identifier: Apache-2.0
#include "fake_heap.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "call_log.h"
#include "library_code.h"

#ifdef SUPPORT_SANITIZER
#define SUPPORT_REAL(function) __interceptor_##function
#else
#define SUPPORT_REAL(function) __libc_##function
#endif

extern "C" void *SUPPORT_REAL(malloc)(size_t);
extern "C" void SUPPORT_REAL(free)(void *);

namespace support {
namespace {

fake_heap *active = nullptr;
constexpr int rubbish = 0xa5;
constexpr size_t largest_filled = 1 << 20;

}  // namespace

fake_heap::fake_heap() {
    is_library_code(nullptr);
    active = this;
}

fake_heap::~fake_heap() { active = nullptr; }

void fake_heap::follow(void *block, const char *name) { remember({block, 0, name}); }

int fake_heap::live_blocks() const {
    return static_cast<int>(
        std::ranges::count_if(blocks_, [](const live_block &block) { return block.address != nullptr; }));
}

bool fake_heap::is_live(const void *block) const {
    return std::ranges::any_of(blocks_, [&](const live_block &known) { return known.address == block; });
}

void fake_heap::remember(const live_block &block) {
    auto *const free_place =
        std::ranges::find_if(blocks_, [](const live_block &known) { return known.address == nullptr; });
    if (free_place == blocks_.end()) {
        ADD_FAILURE() << "more live blocks than the tests can follow";
        return;
    }
    *free_place = block;
}

bool fake_heap::may_allocate(size_t size) {
    if (until_failure_ == 0 || --until_failure_ != 0) return true;
    call_log::add(fmt::format("malloc({}) fails", size));
    return false;
}

void fake_heap::allocated(void *block, size_t size) {
    call_log::add(fmt::format("malloc({})", size));
    if (block == nullptr) return;
    std::memset(block, rubbish, std::min(size, largest_filled));
    remember({block, size, nullptr});
}

void fake_heap::freed(const void *block) {
    if (block == nullptr) return;
    auto *const known = std::ranges::find_if(blocks_, [&](const live_block &live) { return live.address == block; });
    if (known == blocks_.end()) return;
    const live_block gone = std::exchange(*known, {});
    const auto *const content = static_cast<const uint8_t *>(block);
    last_freed_.assign(content, content + std::min(gone.size, largest_filled));
    call_log::add(gone.name != nullptr ? fmt::format("free({})", gone.name) : fmt::format("free({})", gone.size));
}

}  // namespace support

SUPPORT_INTERPOSER void *malloc(size_t size) {
    support::fake_heap *const heap = support::active;
    if (heap == nullptr || !support::is_library_code(__builtin_return_address(0))) return SUPPORT_REAL(malloc)(size);
    if (!heap->may_allocate(size)) return nullptr;
    void *const block = SUPPORT_REAL(malloc)(size);
    heap->allocated(block, size);
    return block;
}

SUPPORT_INTERPOSER void free(void *block) {
    if (support::active != nullptr) support::active->freed(block);
    SUPPORT_REAL(free)(block);
}
