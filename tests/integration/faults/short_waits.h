// SPDX-License-Identifier: Apache-2.0
// short_waits.h: makes the waits of the transport pass a thousand times faster, and looks at them.
//
// Whoever links this has the functions of the C library that the transport waits with replaced. What a socket itself
// waits is short throughout; the rest of a wait, which the transport counts by the clock, only while a shortened_waits
// lives. So a call that is to be answered has all of its time.
#ifndef TESTS_INTEGRATION_FAULTS_SHORT_WAITS_H
#define TESTS_INTEGRATION_FAULTS_SHORT_WAITS_H

#include <cstdint>
#include <functional>
#include <vector>

namespace faults {

// While it lives, a second that a thread of the process waits lasts a millisecond, and the monotonic clock goes as
// fast.
class shortened_waits {
  public:
    shortened_waits();
    ~shortened_waits();
    shortened_waits(const shortened_waits &) = delete;
    shortened_waits &operator=(const shortened_waits &) = delete;
};

// While it lives, all waits are as long as they are.
class unaltered_waits {
  public:
    unaltered_waits();
    ~unaltered_waits();
    unaltered_waits(const unaltered_waits &) = delete;
    unaltered_waits &operator=(const unaltered_waits &) = delete;
};

// The waits in seconds that connections were set to since the last call, in order. Thread-safe.
[[nodiscard]] std::vector<uint32_t> take_set_waits();

// While it lives, threads call `action` with the socket each time that they set how long it waits: a request has gone
// out over a new connection then, and its answer is not yet looked for.
class before_first_wait {
  public:
    explicit before_first_wait(std::function<void(int socket)> action);
    ~before_first_wait();
    before_first_wait(const before_first_wait &) = delete;
    before_first_wait &operator=(const before_first_wait &) = delete;
};

}  // namespace faults

#endif
