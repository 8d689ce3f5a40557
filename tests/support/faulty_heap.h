// SPDX-License-Identifier: Apache-2.0
// faulty_heap.h: a heap that runs out. It stands before malloc and operator new of the whole process, so that also what
// the C library allocates on behalf of others counts.
#ifndef SUPPORT_FAULTY_HEAP_H
#define SUPPORT_FAULTY_HEAP_H

#include "armed_calls.h"

namespace support {

// While the object lives, allocations that shared objects make on this thread fail when it is their turn.
class faulty_heap {
  public:
    explicit faulty_heap(call_range turns);
    ~faulty_heap();
    faulty_heap(const faulty_heap &) = delete;
    faulty_heap &operator=(const faulty_heap &) = delete;

    [[nodiscard]] int allocations() const { return calls_.made(); }
    [[nodiscard]] int failed() const { return calls_.failed(); }

    // What the functions that stand in for the C library's ask. Returns false when the allocation has to fail.
    SUPPORT_UNSANITIZED bool may_allocate() { return calls_.count() == 0; }

  private:
    armed_calls calls_;
};

// The blocks of the process that are allocated and not freed.
long live_blocks();

}  // namespace support

#endif
