// SPDX-License-Identifier: Apache-2.0
#include "mts/server.h"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <span>

#include "mts/service_listener.h"

namespace platform_dev {

namespace {

// A descriptor of the caller's.
class watched_fd final : public event_source {
  public:
    watched_fd(int fd, mts_fd_handler_t handler, void *context) : fd_(fd), handler_(handler), context_(context) {}

    [[nodiscard]] int descriptor() const override { return fd_; }

    bool on_event(uint32_t) override {
        handler_(context_, fd_);
        return true;
    }

  private:
    int fd_;
    mts_fd_handler_t handler_;
    void *context_;
};

unique_fd open_spare() { return unique_fd(::open("/dev/null", O_RDONLY | O_CLOEXEC)); }

}  // namespace

int server::open() {
    if (!own_runtime_dir(directory_)) return errno;
    epoll_ = unique_fd(epoll_create1(EPOLL_CLOEXEC));
    if (!epoll_) return errno;
    stop_ = unique_fd(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!stop_) return errno;
    spare_ = open_spare();
    if (!spare_) return errno;
    return add_fd(stop_.get(), end_run, this);
}

int server::add_service(const service &added) {
    auto listener = std::make_unique<service_listener>(*this, added);
    if (const int error = listener->open()) return error;
    return add(std::move(listener));
}

// A service may remove itself, or another one that has events in this round.
int server::remove_service(uint32_t node, uint32_t sap) {
    const auto first = static_cast<std::ptrdiff_t>(removed_.size());
    for (auto at = sources_.begin(); at != sources_.end();) {
        const auto next = std::next(at);
        if (at->first->serves(node, sap)) removed_.push_back(std::move(sources_.extract(at).mapped()));
        at = next;
    }
    const std::span ended(removed_.begin() + first, removed_.end());
    // The listener goes first: a client whose connection ends must find nobody where it asks again.
    std::ranges::partition(ended, [](const auto &source) { return source->takes_clients(); });
    for (const auto &source : ended) source->end();
    return ended.empty() ? ENOENT : 0;
}

int server::add_fd(int fd, mts_fd_handler_t handler, void *context) {
    return add(std::make_unique<watched_fd>(fd, handler, context));
}

int server::run() {
    running_ = true;
    while (running_) {
        removed_.clear();
        epoll_event events[32];
        const int count = epoll_wait(epoll_.get(), events, std::size(events), -1);
        if (count < 0 && errno != EINTR) return errno;
        // A source that is done is destroyed in its own event, so no later event of this round can meet it.
        for (int i = 0; i < count && running_; ++i) {
            auto *source = static_cast<event_source *>(events[i].data.ptr);
            const bool is_served = removed_.empty() || sources_.contains(source);
            if (is_served && !source->on_event(events[i].events)) sources_.erase(source);
        }
    }
    return 0;
}

void server::stop() const {
    const int saved_errno = errno;
    eventfd_write(stop_.get(), 1);
    errno = saved_errno;
}

int server::add(std::unique_ptr<event_source> source) {
    event_source *added = source.get();
    sources_.emplace(added, std::move(source));
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.ptr = added;
    if (epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, added->descriptor(), &event) == 0) return 0;
    const int error = errno;
    sources_.erase(added);
    return error;
}

int server::wait_for(event_source &source, uint32_t events) {
    epoll_event event{};
    event.events = events;
    event.data.ptr = &source;
    return epoll_ctl(epoll_.get(), EPOLL_CTL_MOD, source.descriptor(), &event) == 0 ? 0 : errno;
}

void server::turn_away(int listening_socket) {
    spare_.reset();
    unique_fd(accept4(listening_socket, nullptr, nullptr, SOCK_CLOEXEC)).reset();
    spare_ = open_spare();
}

void server::end_run(void *self, int stop_fd) {
    eventfd_t count = 0;
    eventfd_read(stop_fd, &count);
    static_cast<server *>(self)->running_ = false;
}

}  // namespace platform_dev
