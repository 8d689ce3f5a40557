// SPDX-License-Identifier: Apache-2.0
#include "output/own_output.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include <fmt/core.h>

#include <system_error>

namespace pmctl {
namespace {

constexpr int first_private_descriptor = STDERR_FILENO + 1;

void lead_nowhere(int descriptor) {
    const int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nowhere, descriptor);
    if (nowhere != descriptor) close(nowhere);
}

// A descriptor that the program was started without would be given to a socket or a pipe, and messages printed into it.
void occupy(int descriptor) {
    if (fcntl(descriptor, F_GETFD) < 0) lead_nowhere(descriptor);
}

// For descriptors that do not block. A signal ends the wait.
void wait_until_writable(int descriptor) {
    pollfd writable{descriptor, POLLOUT, 0};
    poll(&writable, 1, -1);
}

std::string write_failure(int error) {
    if (error == EPIPE) return {};
    return fmt::format("cannot write the output: {}", std::generic_category().message(error));
}

}  // namespace

own_output::own_output() : descriptor_(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, first_private_descriptor)) {
    occupy(STDIN_FILENO);
    lead_nowhere(STDOUT_FILENO);
    occupy(STDERR_FILENO);
}

own_output::~own_output() {
    if (descriptor_ >= 0) close(descriptor_);
}

void own_output::show_diagnostics() {
    dup2(STDERR_FILENO, STDOUT_FILENO);
    setvbuf(stdout, nullptr, _IOLBF, 0);
}

std::string own_output::write(std::string_view text, bool (*gives_up)()) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written < 0 && errno == EAGAIN)
            wait_until_writable(descriptor_);
        else if (written < 0 && errno != EINTR)
            return write_failure(errno);
        if (written > 0) text.remove_prefix(static_cast<size_t>(written));
        if (gives_up != nullptr && gives_up()) return {};
    }
    return {};
}

}  // namespace pmctl
