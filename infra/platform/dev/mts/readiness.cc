// SPDX-License-Identifier: Apache-2.0
#include "mts/readiness.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <cerrno>

namespace platform_dev {

namespace {

int add(const unique_fd &epoll, int descriptor) {
    epoll_event readable{};
    readable.events = EPOLLIN;
    return epoll_ctl(epoll.get(), EPOLL_CTL_ADD, descriptor, &readable) == 0 ? 0 : errno;
}

}  // namespace

int readiness::open() {
    unique_fd epoll(epoll_create1(EPOLL_CLOEXEC));
    unique_fd kept(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!epoll || !kept) return errno;
    if (const int error = add(epoll, kept.get())) return error;
    epoll_ = std::move(epoll);
    kept_ = std::move(kept);
    return 0;
}

int readiness::watch(int socket) { return is_open() ? add(epoll_, socket) : 0; }

void readiness::forget(int socket) {
    if (is_open()) epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, socket, nullptr);
}

// Neither can fail: the counter is below its limit when it is added to, and to empty an empty one is no harm.
void readiness::show_kept(bool are_there) {
    if (!is_open()) return;
    eventfd_t count = 0;
    if (are_there)
        eventfd_write(kept_.get(), 1);
    else
        eventfd_read(kept_.get(), &count);
}

}  // namespace platform_dev
