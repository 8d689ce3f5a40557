// SPDX-License-Identifier: Apache-2.0
// public_copies.h: programs and files that every user of the machine can reach, wherever the build and the sources lie.
#ifndef SUPPORT_PUBLIC_COPIES_H
#define SUPPORT_PUBLIC_COPIES_H

#include <filesystem>
#include <string>

namespace support {

// The copies go with the object.
class public_copies {
  public:
    public_copies();
    ~public_copies() { std::filesystem::remove_all(folder_); }
    public_copies(const public_copies &) = delete;
    public_copies &operator=(const public_copies &) = delete;

    // Copies a built program and the shared objects of its build, which it finds as it found those. Returns its path.
    [[nodiscard]] std::string program(const std::filesystem::path &original) const;

    // Returns the path of the copy.
    [[nodiscard]] std::string file(const std::filesystem::path &original) const;

  private:
    std::filesystem::path folder_;
};

}  // namespace support

#endif
