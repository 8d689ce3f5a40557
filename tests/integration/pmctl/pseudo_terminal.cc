// SPDX-License-Identifier: Apache-2.0
#include "integration/pmctl/pseudo_terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

constexpr int limit_ms = 60'000;

int open_master() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master < 0 || grantpt(master) != 0 || unlockpt(master) != 0) throw std::runtime_error("posix_openpt");
    return master;
}

}  // namespace

bool pseudo_terminal::exists_here() {
    const int master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (master >= 0) close(master);
    return master >= 0;
}

pseudo_terminal::pseudo_terminal(unsigned short lines, unsigned short columns)
    : master_(open_master()), screen_(open(ptsname(master_), O_RDWR | O_NOCTTY | O_CLOEXEC)), path_(ptsname(master_)) {
    resize(lines, columns);
}

pseudo_terminal::~pseudo_terminal() {
    close(screen_);
    close(master_);
}

void pseudo_terminal::resize(unsigned short lines, unsigned short columns) {
    const winsize size{lines, columns, 0, 0};
    if (ioctl(screen_, TIOCSWINSZ, &size) != 0) throw std::runtime_error("TIOCSWINSZ");
}

bool pseudo_terminal::read_more(int milliseconds) {
    pollfd readable{master_, POLLIN, 0};
    if (poll(&readable, 1, milliseconds) != 1) return false;
    std::array<char, 4096> buffer{};
    const ssize_t size = read(master_, buffer.data(), buffer.size());
    if (size <= 0) return false;
    unread_.append(buffer.data(), static_cast<size_t>(size));
    unread_.erase(std::remove(unread_.begin(), unread_.end(), '\r'), unread_.end());
    return true;
}

std::string pseudo_terminal::read_to(const std::string &end) {
    while (unread_.find(end) == std::string::npos)
        if (!read_more(limit_ms)) return std::exchange(unread_, "");
    const size_t length = unread_.find(end) + end.size();
    const std::string text = unread_.substr(0, length);
    unread_.erase(0, length);
    return text;
}

std::string pseudo_terminal::read_what_is_there() {
    while (read_more(0)) {
    }
    return std::exchange(unread_, "");
}
