// SPDX-License-Identifier: Apache-2.0
#include "common/own_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace platform_dev {

namespace {

constexpr mode_t owner_mode = S_IRUSR | S_IWUSR;

// What has another name besides is somebody's file that is not meant for us to change.
bool is_own(int fd) {
    struct stat status {};
    if (fstat(fd, &status) != 0) return false;
    if (S_ISREG(status.st_mode) && status.st_uid == geteuid() && status.st_nlink <= 1) return true;
    errno = EPERM;
    return false;
}

}  // namespace

unique_fd open_own_file(const char *path) {
    unique_fd fd(open(path, O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, owner_mode));
    if (fd && !is_own(fd.get())) return {};
    return fd;
}

unique_fd take_lock(const char *path) {
    unique_fd fd = open_own_file(path);
    if (!fd || fchmod(fd.get(), owner_mode) != 0 || flock(fd.get(), LOCK_EX | LOCK_NB) != 0) return {};
    return fd;
}

// The group comes first, so that no other one ever has its rights.
bool admit_users(const runtime_directory &directory, const char *path, mode_t group_mode) {
    if (!directory.is_shared) return chmod(path, owner_mode) == 0;
    return lchown(path, static_cast<uid_t>(-1), directory.group) == 0 && chmod(path, owner_mode | group_mode) == 0;
}

}  // namespace platform_dev
