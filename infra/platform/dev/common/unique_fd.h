// SPDX-License-Identifier: Apache-2.0
// unique_fd.h: the owner of a file descriptor.
#ifndef PLATFORM_DEV_COMMON_UNIQUE_FD_H
#define PLATFORM_DEV_COMMON_UNIQUE_FD_H

#include <unistd.h>

#include <utility>

namespace platform_dev {

// Closes its descriptor when it goes. Negative stands for none.
class unique_fd {
  public:
    unique_fd() = default;
    explicit unique_fd(int fd) : fd_(fd) {}
    unique_fd(unique_fd &&other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    unique_fd &operator=(unique_fd &&other) noexcept {
        std::swap(fd_, other.fd_);
        other.reset();
        return *this;
    }
    ~unique_fd() { reset(); }

    [[nodiscard]] int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

    // The descriptor, which is the caller's to close from now on.
    [[nodiscard]] int release() { return std::exchange(fd_, -1); }

    void reset() {
        if (fd_ >= 0) close(std::exchange(fd_, -1));
    }

  private:
    int fd_ = -1;
};

}  // namespace platform_dev

#endif
