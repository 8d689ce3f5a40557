// SPDX-License-Identifier: Apache-2.0
#include "service_notifier.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace virtual_switch {
namespace {

void notify(const std::string &state) {
    const char *const path = std::getenv("NOTIFY_SOCKET");
    sockaddr_un address{};
    if (path == nullptr || std::strlen(path) >= sizeof address.sun_path) return;
    address.sun_family = AF_UNIX;
    std::strcpy(address.sun_path, path);
    if (address.sun_path[0] == '@') address.sun_path[0] = '\0';  // the abstract name space
    const int fd = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) return;
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + std::strlen(path));
    sendto(fd, state.data(), state.size(), MSG_NOSIGNAL | MSG_DONTWAIT, reinterpret_cast<const sockaddr *>(&address),
           size);
    close(fd);
}

uint64_t monotonic_microseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint64_t>(now.tv_sec) * 1000000 + static_cast<uint64_t>(now.tv_nsec) / 1000;
}

}  // namespace

void notify_ready() { notify("READY=1"); }

// The manager matches the READY that follows by the time.
void notify_reloading() { notify("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(monotonic_microseconds())); }

void notify_stopping() { notify("STOPPING=1"); }

}  // namespace virtual_switch
