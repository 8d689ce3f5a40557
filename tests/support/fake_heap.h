// SPDX-License-Identifier: Apache-2.0
// fake_heap.h: the heap as the library sees it. While the object lives, every block that the library allocates is
// logged, filled with rubbish and followed until someone frees it.
#ifndef SUPPORT_FAKE_HEAP_H
#define SUPPORT_FAKE_HEAP_H

#include <array>
#include <cstddef>

#include "bytes.h"

namespace support {

class fake_heap {
  public:
    fake_heap();
    ~fake_heap();
    fake_heap(const fake_heap &) = delete;
    fake_heap &operator=(const fake_heap &) = delete;

    // Makes the n-th allocation from now on fail, counted from 1.
    void fail_allocation(int n) { until_failure_ = n; }

    // Follows a block that was allocated elsewhere and is the library's to free; it goes by a name that must live on.
    void follow(void *block, const char *name);

    // Blocks that nobody has freed yet.
    [[nodiscard]] int live_blocks() const;
    [[nodiscard]] bool is_live(const void *block) const;

    // What the block that was freed last held then.
    [[nodiscard]] const bytes &last_freed() const { return last_freed_; }

    // What the functions that stand in for the C library's ask.
    bool may_allocate(size_t size);
    void allocated(void *block, size_t size);
    void freed(const void *block);

  private:
    struct live_block {
        const void *address;
        size_t size;
        const char *name;
    };

    void remember(const live_block &block);

    std::array<live_block, 64> blocks_{};
    int until_failure_ = 0;
    bytes last_freed_;
};

}  // namespace support

#endif
