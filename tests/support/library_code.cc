// SPDX-License-Identifier: Apache-2.0
#include "library_code.h"

#include <dlfcn.h>
#include <link.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace support {
namespace {

struct address_range {
    uintptr_t begin = 0;
    uintptr_t end = 0;
};

int find_library(struct dl_phdr_info *object, size_t, void *result) {
    if (!std::string_view(object->dlpi_name).ends_with("libport_mgr_common.so")) return 0;
    auto &range = *static_cast<address_range *>(result);
    for (int i = 0; i < object->dlpi_phnum; ++i) {
        const auto &segment = object->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD || (segment.p_flags & PF_X) == 0) continue;
        range.begin = object->dlpi_addr + segment.p_vaddr;
        range.end = range.begin + segment.p_memsz;
    }
    return 1;
}

// What of the library runs while the process ends is the compiler's, which saves its counts of the lines that ran.
bool process_ends = false;

address_range library_range() {
    address_range range;
    dl_iterate_phdr(find_library, &range);
    std::atexit([] { process_ends = true; });
    return range;
}

}  // namespace

bool is_library_code(const void *return_address) {
    static const address_range range = library_range();
    const auto address = reinterpret_cast<uintptr_t>(return_address);
    return address >= range.begin && address < range.end && !process_ends;
}

void *next_symbol(const char *name) {
    using look_up = void *(*)(void *, const char *);
    static const auto real = reinterpret_cast<look_up>(dlvsym(RTLD_NEXT, "dlsym", "GLIBC_2.34"));
    return real(RTLD_NEXT, name);
}

}  // namespace support
