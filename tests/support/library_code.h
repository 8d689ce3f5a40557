// SPDX-License-Identifier: Apache-2.0
// library_code.h: tells the library's calls of the C library from everyone else's.
#ifndef SUPPORT_LIBRARY_CODE_H
#define SUPPORT_LIBRARY_CODE_H

// Not under a sanitizer: the functions that stand in for the C library's run before sanitizers are set up. They leave
// everything that is more than a call to others, which are under it.
#define SUPPORT_INTERPOSER                                                                          \
    extern "C" __attribute__((visibility("default"), no_sanitize("address", "undefined", "thread"), \
                              optimize("O2", "optimize-sibling-calls")))

namespace support {

// Whether a return address lies in libport_mgr_common.so.
bool is_library_code(const void *return_address);

// Looks a symbol up as dlsym would have done, had the tests not taken its place.
void *next_symbol(const char *name);

}  // namespace support

#endif
