// SPDX-License-Identifier: Apache-2.0
#include "faulty_system.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

#include "library_code.h"

namespace support {
namespace {

thread_local faulty_system *active = nullptr;

SUPPORT_UNSANITIZED bool passes(const char *call, const void *return_address) {
    return active == nullptr || is_own_code(return_address) || active->may(call);
}

SUPPORT_UNSANITIZED bool is_interrupting() { return active != nullptr && active->interrupts(); }

// The function that this one stands before. Those that ask keep it without a guard, which sanitizers look at, too.
template <typename Function>
SUPPORT_UNSANITIZED Function *next(Function *, const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

}  // namespace

faulty_system::faulty_system(call_range turns, int first_error, int later_error)
    : calls_(turns), first_error_(first_error), later_error_(later_error) {
    active = this;
}

faulty_system::~faulty_system() { active = nullptr; }

bool faulty_system::may(const char *call) {
    const int failures = calls_.count();
    if (failures == 0) return true;
    if (failures == 1) first_failed_call_ = call;
    last_failed_call_ = call;
    errno = failures == 1 ? first_error_ : later_error_;
    return false;
}

}  // namespace support

#define SUPPORT_SYSTEM_CALL(result, failure, name, parameters, arguments)         \
    SUPPORT_INTERPOSER result name parameters {                                   \
        static decltype(&name) real;                                              \
        if (real == nullptr) real = support::next(&name, #name);                  \
        if (!support::passes(#name, __builtin_return_address(0))) return failure; \
        return real arguments;                                                    \
    }

SUPPORT_SYSTEM_CALL(int, -1, socket, (int domain, int type, int protocol), (domain, type, protocol))
SUPPORT_SYSTEM_CALL(int, -1, connect, (int fd, const sockaddr *address, socklen_t size), (fd, address, size))
SUPPORT_SYSTEM_CALL(int, -1, getsockopt, (int fd, int level, int name, void *value, socklen_t *size),
                    (fd, level, name, value, size))
SUPPORT_SYSTEM_CALL(int, -1, setsockopt, (int fd, int level, int name, const void *value, socklen_t size),
                    (fd, level, name, value, size))
SUPPORT_SYSTEM_CALL(ssize_t, -1, send, (int fd, const void *bytes, size_t size, int flags), (fd, bytes, size, flags))
SUPPORT_SYSTEM_CALL(ssize_t, -1, sendmsg, (int fd, const msghdr *message, int flags), (fd, message, flags))
SUPPORT_SYSTEM_CALL(ssize_t, -1, recv, (int fd, void *bytes, size_t size, int flags), (fd, bytes, size, flags))
SUPPORT_SYSTEM_CALL(ssize_t, -1, recvmsg, (int fd, msghdr *message, int flags), (fd, message, flags))
SUPPORT_SYSTEM_CALL(int, -1, accept4, (int fd, sockaddr *address, socklen_t *size, int flags),
                    (fd, address, size, flags))
SUPPORT_SYSTEM_CALL(int, -1, poll, (pollfd * descriptors, nfds_t count, int timeout), (descriptors, count, timeout))
SUPPORT_SYSTEM_CALL(int, -1, epoll_ctl, (int epoll, int operation, int fd, epoll_event *event),
                    (epoll, operation, fd, event))
SUPPORT_SYSTEM_CALL(int, -1, memfd_create, (const char *name, unsigned flags), (name, flags))
SUPPORT_SYSTEM_CALL(ssize_t, -1, write, (int fd, const void *bytes, size_t size), (fd, bytes, size))
SUPPORT_SYSTEM_CALL(ssize_t, -1, pread, (int fd, void *bytes, size_t size, off_t offset), (fd, bytes, size, offset))
SUPPORT_SYSTEM_CALL(int, -1, fstat, (int fd, struct stat *status), (fd, status))
SUPPORT_SYSTEM_CALL(int, -1, lstat, (const char *path, struct stat *status), (path, status))
SUPPORT_SYSTEM_CALL(int, -1, mkdir, (const char *path, mode_t mode), (path, mode))
SUPPORT_SYSTEM_CALL(void *, MAP_FAILED, mmap,
                    (void *address, size_t size, int protection, int flags, int fd, off_t offset),
                    (address, size, protection, flags, fd, offset))

// What follows the named parameters is as wide as a pointer at most, and may not be there: then it is not looked at.
SUPPORT_INTERPOSER int open(const char *path, int flags, ...) {
    static decltype(&open) real;
    if (real == nullptr) real = support::next(&open, "open");
    if (!support::passes("open", __builtin_return_address(0))) return -1;
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    return real(path, flags, mode);
}

SUPPORT_INTERPOSER int fcntl(int fd, int command, ...) {
    static decltype(&fcntl) real;
    if (real == nullptr) real = support::next(&fcntl, "fcntl");
    if (!support::passes("fcntl", __builtin_return_address(0))) return -1;
    va_list rest;
    va_start(rest, command);
    void *const argument = va_arg(rest, void *);
    va_end(rest);
    return real(fd, command, argument);
}

SUPPORT_INTERPOSER int ioctl(int fd, unsigned long request, ...) {
    static decltype(&ioctl) real;
    if (real == nullptr) real = support::next(&ioctl, "ioctl");
    if (!support::passes("ioctl", __builtin_return_address(0))) return -1;
    va_list rest;
    va_start(rest, request);
    void *const argument = va_arg(rest, void *);
    va_end(rest);
    return real(fd, request, argument);
}

SUPPORT_INTERPOSER int close(int fd) {
    static decltype(&close) real;
    if (real == nullptr) real = support::next(&close, "close");
    const int result = real(fd);
    return support::passes("close", __builtin_return_address(0)) ? result : -1;
}

SUPPORT_INTERPOSER int epoll_wait(int epoll, epoll_event *events, int capacity, int timeout) {
    static decltype(&epoll_wait) real;
    if (real == nullptr) real = support::next(&epoll_wait, "epoll_wait");
    if (support::is_interrupting() && !support::passes("epoll_wait", __builtin_return_address(0))) return -1;
    return real(epoll, events, capacity, timeout);
}
