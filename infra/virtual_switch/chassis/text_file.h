// SPDX-License-Identifier: Apache-2.0
// text_file.h: reads whole files, and replaces them so that they are whole at any moment.
#ifndef VIRTUAL_SWITCH_CHASSIS_TEXT_FILE_H
#define VIRTUAL_SWITCH_CHASSIS_TEXT_FILE_H

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace virtual_switch {

inline constexpr size_t bytes_in_mib = 1024 * 1024;

struct file_closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using file_handle = std::unique_ptr<std::FILE, file_closer>;

// Opens a file to read it, without ever waiting for the other end of a pipe; `more_flags` are open's. Returns null with
// errno when it cannot, and throws chassis_error when it is no regular file.
file_handle open_regular_file(const std::string &path, int more_flags = 0);

// Reads a file that was opened just now; null stands for a failure that is in errno. Throws chassis_error, also for a
// file of more than `most_mib`.
std::string read_text_file(file_handle file, size_t most_mib);

// Replaces the content of a file, or makes it, readable by its owner alone. When it returns, the content survives a
// crash; a crash before leaves the old content or the new one. `path`.new is used meanwhile, whatever was there. Throws
// std::runtime_error, "FILE: what is wrong", when it cannot be done.
void replace_file(const std::string &path, std::string_view content);

}  // namespace virtual_switch

#endif
