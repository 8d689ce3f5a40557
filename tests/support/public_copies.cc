// SPDX-License-Identifier: Apache-2.0
#include "public_copies.h"

#include <stdlib.h>

#include <stdexcept>

namespace support {
namespace {

namespace fs = std::filesystem;

constexpr fs::perms for_all = fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                              fs::perms::others_read | fs::perms::others_exec;

std::string copy_to(const fs::path &folder, const fs::path &original) {
    fs::create_directories(folder);
    fs::permissions(folder, for_all);
    const fs::path copy = folder / original.filename();
    fs::copy_file(original, copy, fs::copy_options::skip_existing);
    fs::permissions(copy, for_all);
    return copy;
}

}  // namespace

public_copies::public_copies() {
    std::string folder = "/tmp/pm-copies-XXXXXX";
    if (mkdtemp(folder.data()) == nullptr) throw std::runtime_error("mkdtemp");
    folder_ = folder;
    fs::permissions(folder_, for_all);
}

// The sanitizers' dlopen loses the run path, so the environment names the folder, too.
std::string public_copies::program(const fs::path &original) const {
    for (const fs::directory_entry &entry : fs::directory_iterator(original.parent_path().parent_path() / "lib")) {
        if (entry.path().extension() == ".so") copy_to(folder_ / "lib", entry.path());
    }
    setenv("LD_LIBRARY_PATH", (folder_ / "lib").c_str(), 1);
    return copy_to(folder_ / "bin", original);
}

std::string public_copies::file(const fs::path &original) const { return copy_to(folder_, original); }

}  // namespace support
