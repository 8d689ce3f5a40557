// SPDX-License-Identifier: Apache-2.0
#include "faulty_heap.h"

#include <cerrno>
#include <cstddef>
#include <new>

#include "library_code.h"

#ifdef SUPPORT_SANITIZER
#define SUPPORT_REAL(function) __interceptor_##function
#else
#define SUPPORT_REAL(function) __libc_##function
#endif

extern "C" void *SUPPORT_REAL(malloc)(size_t);
extern "C" void *SUPPORT_REAL(calloc)(size_t, size_t);
extern "C" void *SUPPORT_REAL(realloc)(void *, size_t);
extern "C" void *SUPPORT_REAL(memalign)(size_t, size_t);
extern "C" void SUPPORT_REAL(free)(void *);

namespace support {
namespace {

thread_local faulty_heap *active = nullptr;
long live = 0;

SUPPORT_UNSANITIZED bool passes(const void *return_address) {
    return active == nullptr || is_own_code(return_address) || active->may_allocate();
}

SUPPORT_UNSANITIZED void *no_memory() {
    errno = ENOMEM;
    return nullptr;
}

SUPPORT_UNSANITIZED void *counted(void *block) {
    if (block != nullptr) __atomic_add_fetch(&live, 1, __ATOMIC_RELAXED);
    return block;
}

SUPPORT_UNSANITIZED void release(void *block) {
    if (block != nullptr) __atomic_sub_fetch(&live, 1, __ATOMIC_RELAXED);
    SUPPORT_REAL(free)(block);
}

}  // namespace

faulty_heap::faulty_heap(call_range turns) : calls_(turns) { active = this; }

faulty_heap::~faulty_heap() { active = nullptr; }

long live_blocks() { return __atomic_load_n(&live, __ATOMIC_RELAXED); }

}  // namespace support

SUPPORT_INTERPOSER void *malloc(size_t size) {
    if (!support::passes(__builtin_return_address(0))) return support::no_memory();
    return support::counted(SUPPORT_REAL(malloc)(size));
}

SUPPORT_INTERPOSER void *calloc(size_t count, size_t size) {
    if (!support::passes(__builtin_return_address(0))) return support::no_memory();
    return support::counted(SUPPORT_REAL(calloc)(count, size));
}

// A block of size 0 is none: then realloc frees.
SUPPORT_INTERPOSER void *realloc(void *block, size_t size) {
    if (size != 0 && !support::passes(__builtin_return_address(0))) return support::no_memory();
    if (block == nullptr) return support::counted(SUPPORT_REAL(realloc)(nullptr, size));
    if (size != 0) return SUPPORT_REAL(realloc)(block, size);
    support::release(block);
    return nullptr;
}

SUPPORT_INTERPOSER void *memalign(size_t alignment, size_t size) {
    if (!support::passes(__builtin_return_address(0))) return support::no_memory();
    return support::counted(SUPPORT_REAL(memalign)(alignment, size));
}

SUPPORT_INTERPOSER void *aligned_alloc(size_t alignment, size_t size) {
    if (!support::passes(__builtin_return_address(0))) return support::no_memory();
    return support::counted(SUPPORT_REAL(memalign)(alignment, size));
}

SUPPORT_INTERPOSER int posix_memalign(void **block, size_t alignment, size_t size) {
    if (!support::passes(__builtin_return_address(0))) return ENOMEM;
    void *const allocated = support::counted(SUPPORT_REAL(memalign)(alignment, size));
    if (allocated == nullptr) return ENOMEM;
    *block = allocated;
    return 0;
}

SUPPORT_INTERPOSER void free(void *block) { support::release(block); }

namespace {

SUPPORT_UNSANITIZED void *allocate(size_t size, const void *return_address) {
    if (!support::passes(return_address)) return nullptr;
    return support::counted(SUPPORT_REAL(malloc)(size != 0 ? size : 1));
}

SUPPORT_UNSANITIZED void *allocate_or_throw(size_t size, const void *return_address) {
    void *const block = allocate(size, return_address);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

}  // namespace

// The remaining forms of the C++ library call these or memory that the functions above count.
SUPPORT_UNSANITIZED void *operator new(size_t size) { return allocate_or_throw(size, __builtin_return_address(0)); }
SUPPORT_UNSANITIZED void *operator new[](size_t size) { return allocate_or_throw(size, __builtin_return_address(0)); }
SUPPORT_UNSANITIZED void *operator new(size_t size, const std::nothrow_t &) noexcept {
    return allocate(size, __builtin_return_address(0));
}
SUPPORT_UNSANITIZED void *operator new[](size_t size, const std::nothrow_t &) noexcept {
    return allocate(size, __builtin_return_address(0));
}
SUPPORT_UNSANITIZED void operator delete(void *block) noexcept { support::release(block); }
SUPPORT_UNSANITIZED void operator delete[](void *block) noexcept { support::release(block); }
SUPPORT_UNSANITIZED void operator delete(void *block, size_t) noexcept { support::release(block); }
SUPPORT_UNSANITIZED void operator delete[](void *block, size_t) noexcept { support::release(block); }

#ifdef SUPPORT_SANITIZER
// The leak check leaves out what the loader keeps, which it knows by its caller; here that is the functions above.
SUPPORT_INTERPOSER const char *__lsan_default_suppressions() { return "leak:ld-linux"; }
SUPPORT_INTERPOSER const char *__lsan_default_options() { return "print_suppressions=0"; }
#endif
