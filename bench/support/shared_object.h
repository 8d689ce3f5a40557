// SPDX-License-Identifier: Apache-2.0
// shared_object.h: an object that a process and those it forks from then on see alike.
#ifndef BENCH_SUPPORT_SHARED_OBJECT_H
#define BENCH_SUPPORT_SHARED_OBJECT_H

#include <sys/mman.h>

#include <new>

#include "bench/support/measure.h"

namespace bench {

template <typename T>
class shared_object {
  public:
    shared_object() : object_(new (map()) T()) {}
    shared_object(const shared_object &) = delete;
    shared_object &operator=(const shared_object &) = delete;
    ~shared_object() { munmap(object_, sizeof(T)); }
    T &operator*() const { return *object_; }
    T *operator->() const { return object_; }

  private:
    static void *map() {
        void *const memory = mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        require(memory != MAP_FAILED, "mmap");
        return memory;
    }

    T *object_;
};

}  // namespace bench

#endif
