// SPDX-License-Identifier: Apache-2.0
#include "common/runtime_dir.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "common/unique_fd.h"

namespace platform_dev {

namespace {

// Members search the directory for names that they know. What is made in it is the group's from the start.
constexpr mode_t shared_mode = S_ISGID | S_IRWXU | S_IXGRP;

// Null when the variable is empty, too.
const char *set_variable(const char *name) {
    const char *value = secure_getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

const char *named_directory() { return set_variable("MTS_RUNTIME_DIR"); }

int print_path(path_buffer &path) {
    if (const char *own = named_directory()) return std::snprintf(path.data(), path.size(), "%s", own);
    if (const char *users = set_variable("XDG_RUNTIME_DIR"))
        return std::snprintf(path.data(), path.size(), "%s/port_mgr", users);
    return std::snprintf(path.data(), path.size(), "/tmp/port_mgr-%u", geteuid());
}

// Only the owner can replace what lies there, and others than the group cannot even reach it.
bool is_guarded(mode_t mode) { return (mode & (S_IWGRP | S_IRWXO)) == 0; }

// Fills in all but the path.
bool inspect(runtime_directory &directory) {
    struct stat status {};
    // A symbolic link is not followed: in /tmp anyone could have put it there.
    if (lstat(directory.path.data(), &status) != 0) return false;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return false;
    }
    if (!is_guarded(status.st_mode)) {
        errno = EPERM;
        return false;
    }
    directory.owner = status.st_uid;
    directory.group = status.st_gid;
    directory.is_shared = (status.st_mode & S_IRWXG) != 0;
    return true;
}

bool find(runtime_directory &directory, bool takes_foreign) {
    if (!runtime_dir_path(directory.path)) return false;
    if (mkdir(directory.path.data(), S_IRWXU) != 0 && errno != EEXIST) return false;
    if (!inspect(directory)) return false;
    if (directory.owner == geteuid() || takes_foreign) return true;
    errno = EPERM;
    return false;
}

}  // namespace

bool runtime_dir_path(path_buffer &path) {
    const int length = print_path(path);
    if (length < 0 || static_cast<size_t>(length) + sizeof '/' + max_runtime_name >= path.size()) {
        errno = ENAMETOOLONG;
        return false;
    }
    return true;
}

// In the places that are taken by default another user could have been first; whoever names a directory means its
// owner.
bool runtime_dir(runtime_directory &directory) { return find(directory, named_directory() != nullptr); }

bool own_runtime_dir(runtime_directory &directory) { return find(directory, false); }

bool share_runtime_dir(runtime_directory &directory, gid_t group) {
    const unique_fd fd(open(directory.path.data(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!fd || fchown(fd.get(), static_cast<uid_t>(-1), group) != 0 || fchmod(fd.get(), shared_mode) != 0) return false;
    return inspect(directory);
}

bool runtime_file(const runtime_directory &directory, const char *name, path_buffer &path) {
    const int length = std::snprintf(path.data(), path.size(), "%s/%s", directory.path.data(), name);
    if (length < 0 || static_cast<size_t>(length) >= path.size()) {
        errno = ENAMETOOLONG;
        return false;
    }
    return true;
}

}  // namespace platform_dev
