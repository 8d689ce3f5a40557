// SPDX-License-Identifier: Apache-2.0
// library_files.h: the built shared objects, and copies of them as they are installed.
#ifndef BENCH_MEMORY_LIBRARY_FILES_H
#define BENCH_MEMORY_LIBRARY_FILES_H

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/support/measure.h"

namespace bench {

inline constexpr auto our_library = "libport_mgr_common.so";
inline constexpr const char *platform_libraries[] = {"libmts.so",    "libpcm.so", "libpfm_intf.so",
                                                     "libsdwrap.so", "libbmp.so", "libutils.so"};

inline std::string library_file(const char *name) { return std::string(LIBRARY_DIRECTORY) + '/' + name; }

// A copy without what debuggers need, as it is installed. Like an installed file it is in memory because it was read
// from the disk, not because it has just been written.
class stripped_copy {
  public:
    explicit stripped_copy(const char *name) : path_("/tmp/bench-" + std::to_string(getpid()) + '-' + name) {
        require(std::system((STRIP " -o " + path_ + ' ' + library_file(name)).c_str()) == 0, STRIP);
        const int file = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
        require(fsync(file) == 0 && posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) == 0, path_.c_str());
        close(file);
    }
    ~stripped_copy() { std::filesystem::remove(path_); }
    stripped_copy(const stripped_copy &) = delete;
    stripped_copy &operator=(const stripped_copy &) = delete;
    [[nodiscard]] const std::string &path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace bench

#endif
