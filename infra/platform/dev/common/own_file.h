// SPDX-License-Identifier: Apache-2.0
// own_file.h: files that who serves keeps in the run-time directory, whatever was left or put there before.
#ifndef PLATFORM_DEV_COMMON_OWN_FILE_H
#define PLATFORM_DEV_COMMON_OWN_FILE_H

#include "common/runtime_dir.h"
#include "common/unique_fd.h"

namespace platform_dev {

// Opens the file at `path` to read and write it, and makes it when missing. Symbolic links are not followed. Returns
// none with errno: EPERM when it is no regular file, belongs to another user or has another name besides.
[[nodiscard]] unique_fd open_own_file(const char *path);

// Takes the lock of which the file at `path`, which nobody else can open, is the place; it lasts as long as the
// descriptor. Returns none with errno: EWOULDBLOCK when another holds it, or as open_own_file does.
[[nodiscard]] unique_fd take_lock(const char *path);

// Lets the owner read and write a file of ours in the directory and, when that is shared, gives its group the rights
// `group_mode`: whatever the umask is and whatever the file had before. Returns false with errno.
[[nodiscard]] bool admit_users(const runtime_directory &directory, const char *path, mode_t group_mode);

}  // namespace platform_dev

#endif
