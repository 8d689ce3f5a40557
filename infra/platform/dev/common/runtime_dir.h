// SPDX-License-Identifier: Apache-2.0
// runtime_dir.h: the directory in which the programs of one user meet: the services' sockets and what they publish.
#ifndef PLATFORM_DEV_COMMON_RUNTIME_DIR_H
#define PLATFORM_DEV_COMMON_RUNTIME_DIR_H

#include <sys/un.h>

#include <array>
#include <cstddef>

namespace platform_dev {

// A path, NUL-terminated, that fits a socket's address.
using path_buffer = std::array<char, sizeof(sockaddr_un::sun_path)>;

// The longest name of a file in the run-time directory, in bytes. Whatever has a shorter one fits a path_buffer.
inline constexpr size_t max_runtime_name = 31;

// Writes the path of the run-time directory: $MTS_RUNTIME_DIR, else $XDG_RUNTIME_DIR/port_mgr, else
// /tmp/port_mgr-UID. Creates it with mode 0700 when missing. Returns false with errno: EPERM when it exists and
// belongs to another user or is open to others, ENOTDIR when it is no directory, ENAMETOOLONG when a socket's
// address cannot hold the names in it. Thread-safe as long as nobody changes the environment.
[[nodiscard]] bool runtime_dir(path_buffer &path);

// Writes the same path and touches nothing, to learn whether the environment names another directory by now. Returns
// false with errno ENAMETOOLONG.
[[nodiscard]] bool runtime_dir_path(path_buffer &path);

// Writes the path of the file `name` in `directory`, which runtime_dir gave. Returns false with errno ENAMETOOLONG.
[[nodiscard]] bool runtime_file(const path_buffer &directory, const char *name, path_buffer &path);

}  // namespace platform_dev

#endif
