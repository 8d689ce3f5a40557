// SPDX-License-Identifier: Apache-2.0
// library_files.h: the built shared objects.
#ifndef BENCH_MEMORY_LIBRARY_FILES_H
#define BENCH_MEMORY_LIBRARY_FILES_H

#include <string>

namespace bench {

inline constexpr auto our_library = "libport_mgr_common.so";
inline constexpr const char *platform_libraries[] = {"libmts.so",    "libpcm.so", "libpfm_intf.so",
                                                     "libsdwrap.so", "libbmp.so", "libutils.so"};

inline std::string library_file(const char *name) { return std::string(LIBRARY_DIRECTORY) + '/' + name; }

}  // namespace bench

#endif
