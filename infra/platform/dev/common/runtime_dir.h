// SPDX-License-Identifier: Apache-2.0
// runtime_dir.h: the directory in which programs meet: the services' sockets and what they publish. It is private to
// its owner, or shared with the members of its group; nobody but the owner can write there.
#ifndef PLATFORM_DEV_COMMON_RUNTIME_DIR_H
#define PLATFORM_DEV_COMMON_RUNTIME_DIR_H

#include <sys/types.h>
#include <sys/un.h>

#include <array>
#include <cstddef>

namespace platform_dev {

// A path, NUL-terminated, that fits a socket's address.
using path_buffer = std::array<char, sizeof(sockaddr_un::sun_path)>;

// The longest name of a file in the run-time directory, in bytes. Whatever has a shorter one fits a path_buffer.
inline constexpr size_t max_runtime_name = 31;

struct runtime_directory {
    path_buffer path;
    uid_t owner;     // who may serve there
    gid_t group;     // whose members may meet them, when is_shared
    bool is_shared;  // its mode lets the group in
};

// Finds the run-time directory: $MTS_RUNTIME_DIR, else $XDG_RUNTIME_DIR/port_mgr, else /tmp/port_mgr-UID. Creates it
// with mode 0700 when missing. Returns false with errno: EPERM when somebody but its owner can write there, when it is
// open to others than its group, or when it belongs to another user and MTS_RUNTIME_DIR does not name it; ENOTDIR when
// it is no directory; ENAMETOOLONG when a socket's address cannot hold the names in it. Thread-safe as long as nobody
// changes the environment.
[[nodiscard]] bool runtime_dir(runtime_directory &directory);

// The same for who serves there: EPERM also when it belongs to another user.
[[nodiscard]] bool own_runtime_dir(runtime_directory &directory);

// Writes the same path and touches nothing, to learn whether the environment names another directory by now. Returns
// false with errno ENAMETOOLONG.
[[nodiscard]] bool runtime_dir_path(path_buffer &path);

// Shares a private directory of our own with a group. Returns false with errno.
[[nodiscard]] bool share_runtime_dir(runtime_directory &directory, gid_t group);

// Writes the path of the file `name` in the directory. Returns false with errno ENAMETOOLONG.
[[nodiscard]] bool runtime_file(const runtime_directory &directory, const char *name, path_buffer &path);

}  // namespace platform_dev

#endif
