// SPDX-License-Identifier: Apache-2.0
// faulty_system.h: a system whose calls fail. It stands before the system calls that the development platform makes;
// a close fails as on Linux, where the descriptor is gone all the same, and epoll_wait, which nothing but a signal
// ends.
#ifndef SUPPORT_FAULTY_SYSTEM_H
#define SUPPORT_FAULTY_SYSTEM_H

#include <cerrno>

#include "armed_calls.h"

namespace support {

// While the object lives, system calls that shared objects make on this thread fail when it is their turn.
class faulty_system {
  public:
    // The first that fails does so with `first_error`, those after it with `later_error`.
    faulty_system(call_range turns, int first_error, int later_error);
    faulty_system(call_range turns, int error) : faulty_system(turns, error, error) {}
    ~faulty_system();
    faulty_system(const faulty_system &) = delete;
    faulty_system &operator=(const faulty_system &) = delete;

    [[nodiscard]] int failed() const { return calls_.failed(); }

    // The system calls that failed first and last, or null.
    [[nodiscard]] const char *first_failed_call() const { return first_failed_call_; }
    [[nodiscard]] const char *last_failed_call() const { return last_failed_call_; }

    [[nodiscard]] bool interrupts() const { return first_error_ == EINTR; }

    // What the functions that stand in for the system's ask. Returns false, with errno, when the call has to fail.
    bool may(const char *call);

  private:
    armed_calls calls_;
    int first_error_;
    int later_error_;
    const char *first_failed_call_ = nullptr;
    const char *last_failed_call_ = nullptr;
};

}  // namespace support

#endif
