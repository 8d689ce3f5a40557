// SPDX-License-Identifier: Apache-2.0
#include "mts/service_listener.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <new>

#include "common/own_file.h"
#include "mts/peer.h"
#include "mts/server.h"
#include "mts/server_connection.h"
#include "mts/service_address.h"

namespace platform_dev {

namespace {

// The last quarter of the descriptors is for the service's own needs, its user and root: members of a group that
// connect without end shut out no more than each other. New descriptors get the lowest free numbers.
bool is_reserved(int fd) {
    rlimit limit{};
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 && static_cast<rlim_t>(fd) >= limit.rlim_cur / 4 * 3;
}

}  // namespace

service_listener::~service_listener() { end(); }

void service_listener::end() {
    if (socket_) unlink(address_.sun_path);
    socket_.reset();
    lock_.reset();
}

int service_listener::open() {
    if (const int error = lock()) return error;
    if (!service_address(server_.directory(), service_.node, service_.sap, address_)) return errno;
    if (unlink(address_.sun_path) != 0 && errno != ENOENT) return errno;
    return listen();
}

int service_listener::lock() {
    path_buffer path;
    if (!service_lock_path(server_.directory(), service_.node, service_.sap, path)) return errno;
    lock_ = take_lock(path.data());
    if (lock_) return 0;
    return errno == EWOULDBLOCK ? EADDRINUSE : errno;
}

// Nobody can connect before the socket listens, so its mode is right by then.
int service_listener::listen() {
    unique_fd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket || bind(socket.get(), reinterpret_cast<const sockaddr *>(&address_), sizeof address_) != 0)
        return errno;
    socket_ = std::move(socket);
    if (!admit_users(server_.directory(), address_.sun_path, S_IRGRP | S_IWGRP)) return errno;
    return ::listen(socket_.get(), SOMAXCONN) == 0 ? 0 : errno;
}

bool service_listener::on_event(uint32_t) {
    unique_fd client(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!client && (errno == EMFILE || errno == ENFILE)) server_.turn_away(socket_.get());
    if (!client) return true;
    try {
        take(std::move(client));
    } catch (const std::bad_alloc &) {
    }
    return true;
}

// A client that is not taken is closed, which is all it needs to learn.
void service_listener::take(unique_fd client) {
    std::optional<peer> from = peer_of(client.get());
    if (!from || !is_admitted(*from, server_.directory())) return;
    if (!is_trusted(*from) && is_reserved(client.get())) return;
    static_cast<void>(
        server_.add(std::make_unique<server_connection>(server_, service_, *std::move(from), std::move(client))));
}

}  // namespace platform_dev
