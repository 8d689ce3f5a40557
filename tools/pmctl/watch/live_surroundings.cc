// SPDX-License-Identifier: Apache-2.0
#include "watch/live_surroundings.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <system_error>

#include "outcome.h"

namespace pmctl {
namespace {

using std::chrono::nanoseconds;

// What the signal handler touches: the flag, and a pipe that wakes who waits.
volatile std::sig_atomic_t stop_requested = 0;
std::array<int, 2> wake_pipe{-1, -1};

void request_stop(int) {
    stop_requested = 1;
    [[maybe_unused]] const ssize_t written = write(wake_pipe[1], "", 1);
}

// Blocking calls are interrupted, so that a switch that does not answer holds nobody up. A signal that the program was
// started to ignore is ignored.
void stop_at(int signal) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) return;
    struct sigaction stop {};
    stop.sa_handler = request_stop;
    stop.sa_flags = SA_RESETHAND;
    sigaction(signal, &stop, nullptr);
}

// Blocks it, so that it interrupts waits alone and neither questions nor drawings. Returns what was blocked before.
sigset_t keep_back(int signal) {
    struct sigaction nothing {};
    nothing.sa_handler = [](int) {};
    sigaction(signal, &nothing, nullptr);
    sigset_t kept{};
    sigset_t before{};
    sigaddset(&kept, signal);
    sigprocmask(SIG_BLOCK, &kept, &before);
    sigdelset(&before, signal);
    return before;
}

timespec time_left(steady_time until) {
    const auto left = std::max<steady_interval>(until - std::chrono::steady_clock::now(), steady_interval::zero());
    const auto whole = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {static_cast<time_t>(whole.count()), static_cast<long>(nanoseconds(left - whole).count())};
}

}  // namespace

live_surroundings::live_surroundings(own_output &output, std::string colour_option)
    : output_(output), colour_option_(std::move(colour_option)) {
    if (pipe2(wake_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "cannot wait");
    stop_at(SIGINT);
    stop_at(SIGTERM);
    with_resizes_ = keep_back(SIGWINCH);
}

terminal live_surroundings::screen() const { return terminal_at(output_.descriptor(), colour_option_); }

steady_time live_surroundings::now() const { return std::chrono::steady_clock::now(); }

std::string live_surroundings::time_of_day() const {
    const time_t seconds = time(nullptr);
    tm local{};
    localtime_r(&seconds, &local);
    char text[sizeof "2026-11-21 15:24:50"]{};
    strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    return text;
}

bool live_surroundings::is_over() const { return stop_requested != 0 || reader_has_gone_; }

void live_surroundings::wait_until(steady_time when, bool on_screen) {
    for (bool resized = false; !is_over() && !resized;) {
        std::array<pollfd, 2> watched{{{wake_pipe[0], POLLIN, 0}, {output_.descriptor(), 0, 0}}};
        const timespec left = time_left(when);
        const int ready = ppoll(watched.data(), watched.size(), &left, on_screen ? &with_resizes_ : nullptr);
        resized = on_screen && ready < 0;
        reader_has_gone_ = (watched[1].revents & POLLERR) != 0;
        if (now() >= when) return;
    }
}

std::string live_surroundings::write(const std::string &text) {
    return output_.write(text, [] { return stop_requested != 0; });
}

void live_surroundings::write_last(const std::string &text) {
    constexpr int while_a_queue_is_emptied_ms = 100;
    pollfd screen{output_.descriptor(), POLLOUT, 0};
    if (poll(&screen, 1, while_a_queue_is_emptied_ms) == 1 && (screen.revents & POLLOUT) != 0)
        static_cast<void>(output_.write(text, [] { return true; }));
}

void live_surroundings::tell(const std::string &message) { fputs(message_line(message).c_str(), stderr); }

}  // namespace pmctl
