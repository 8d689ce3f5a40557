// SPDX-License-Identifier: Apache-2.0
#include "common/runtime_dir.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace platform_dev {

namespace {

bool is_private_directory(const char *path) {
    struct stat status {};
    // A symbolic link is not followed: in /tmp anyone could have put it there.
    if (lstat(path, &status) != 0) return false;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return false;
    }
    if (status.st_uid != geteuid() || (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        errno = EPERM;
        return false;
    }
    return true;
}

// Null when the variable is empty, too.
const char *set_variable(const char *name) {
    const char *value = secure_getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

int print_path(path_buffer &path) {
    if (const char *own = set_variable("MTS_RUNTIME_DIR")) return std::snprintf(path.data(), path.size(), "%s", own);
    if (const char *users = set_variable("XDG_RUNTIME_DIR"))
        return std::snprintf(path.data(), path.size(), "%s/port_mgr", users);
    return std::snprintf(path.data(), path.size(), "/tmp/port_mgr-%u", geteuid());
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

bool runtime_dir(path_buffer &path) {
    if (!runtime_dir_path(path)) return false;
    if (mkdir(path.data(), S_IRWXU) != 0 && errno != EEXIST) return false;
    return is_private_directory(path.data());
}

bool runtime_file(const path_buffer &directory, const char *name, path_buffer &path) {
    const int length = std::snprintf(path.data(), path.size(), "%s/%s", directory.data(), name);
    if (length < 0 || static_cast<size_t>(length) >= path.size()) {
        errno = ENAMETOOLONG;
        return false;
    }
    return true;
}

}  // namespace platform_dev
