// SPDX-License-Identifier: Apache-2.0
#include "short_waits.h"

#include <dlfcn.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>

namespace faults {
namespace {

constexpr int factor = 1000;
constexpr int64_t second = 1'000'000'000;

std::atomic<bool> unaltered = false;
std::atomic<bool> clock_is_fast = false;
std::atomic<int64_t> fast_since = 0;  // nanoseconds of the real clock

std::mutex mutex;
std::vector<uint32_t> set_waits;         // guarded by `mutex`
std::function<void(int)> on_first_wait;  // changed while no other thread waits

template <typename Function>
Function *real(const char *name) {
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

int real_clock_gettime(clockid_t clock, timespec *now) {
    static auto *const function = real<decltype(clock_gettime)>("clock_gettime");
    return function(clock, now);
}

int64_t nanoseconds() {
    timespec now{};
    real_clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * second + now.tv_nsec;
}

timeval shorten(const timeval &wait) {
    const int64_t microseconds = (wait.tv_sec * int64_t{1'000'000} + wait.tv_usec) / factor;
    return {static_cast<time_t>(microseconds / 1'000'000), static_cast<suseconds_t>(microseconds % 1'000'000)};
}

void note_wait(int socket, const timeval &wait) {
    {
        const std::lock_guard guard(mutex);
        set_waits.push_back(static_cast<uint32_t>(wait.tv_sec));
    }
    if (on_first_wait) on_first_wait(socket);
}

}  // namespace

shortened_waits::shortened_waits() {
    fast_since = nanoseconds();
    clock_is_fast = true;
}

shortened_waits::~shortened_waits() { clock_is_fast = false; }

unaltered_waits::unaltered_waits() { unaltered = true; }

unaltered_waits::~unaltered_waits() { unaltered = false; }

std::vector<uint32_t> take_set_waits() {
    const std::lock_guard guard(mutex);
    return std::exchange(set_waits, {});
}

before_first_wait::before_first_wait(std::function<void(int)> action) { on_first_wait = std::move(action); }

before_first_wait::~before_first_wait() { on_first_wait = nullptr; }

}  // namespace faults

// The libraries find these before those of the C library.
#pragma GCC visibility push(default)
extern "C" {

int setsockopt(int socket, int level, int name, const void *value, socklen_t size) noexcept {
    static auto *const function = faults::real<decltype(setsockopt)>("setsockopt");
    if (level != SOL_SOCKET || name != SO_RCVTIMEO || faults::unaltered)
        return function(socket, level, name, value, size);
    const timeval &wait = *static_cast<const timeval *>(value);
    faults::note_wait(socket, wait);
    const timeval shortened = faults::shorten(wait);
    return function(socket, level, name, &shortened, sizeof shortened);
}

int poll(pollfd *descriptors, nfds_t count, int milliseconds) {
    static auto *const function = faults::real<decltype(poll)>("poll");
    const bool shorten = faults::clock_is_fast && milliseconds > 0;
    return function(descriptors, count, shorten ? std::max(milliseconds / faults::factor, 1) : milliseconds);
}

int clock_gettime(clockid_t clock, timespec *now) noexcept {
    const int result = faults::real_clock_gettime(clock, now);
    if (clock != CLOCK_MONOTONIC || !faults::clock_is_fast || result != 0) return result;
    const int64_t since = faults::fast_since;
    const int64_t fast = since + (now->tv_sec * faults::second + now->tv_nsec - since) * faults::factor;
    *now = {static_cast<time_t>(fast / faults::second), static_cast<long>(fast % faults::second)};
    return result;
}
}
#pragma GCC visibility pop
