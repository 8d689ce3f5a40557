// SPDX-License-Identifier: Apache-2.0
#include "mts/service_listener.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <cerrno>
#include <new>

#include "mts/server.h"
#include "mts/server_connection.h"
#include "mts/service_address.h"

namespace platform_dev {

service_listener::~service_listener() { end(); }

void service_listener::end() {
    if (socket_) unlink(address_.sun_path);
    socket_.reset();
    lock_.reset();
}

int service_listener::open(const path_buffer &directory) {
    if (const int error = lock(directory)) return error;
    if (!service_address(directory, service_.node, service_.sap, address_)) return errno;
    if (unlink(address_.sun_path) != 0 && errno != ENOENT) return errno;
    return listen();
}

int service_listener::lock(const path_buffer &directory) {
    path_buffer path;
    if (!service_lock_path(directory, service_.node, service_.sap, path)) return errno;
    lock_ = unique_fd(::open(path.data(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!lock_) return errno;
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) return 0;
    return errno == EWOULDBLOCK ? EADDRINUSE : errno;
}

int service_listener::listen() {
    unique_fd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket || bind(socket.get(), reinterpret_cast<const sockaddr *>(&address_), sizeof address_) != 0)
        return errno;
    socket_ = std::move(socket);
    return ::listen(socket_.get(), SOMAXCONN) == 0 ? 0 : errno;
}

bool service_listener::on_event(uint32_t) {
    unique_fd client(accept4(socket_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!client && (errno == EMFILE || errno == ENFILE)) server_.turn_away(socket_.get());
    if (!client || !is_own_user(client.get())) return true;
    try {
        // A client that cannot be added is closed, which is all it needs to learn.
        static_cast<void>(server_.add(std::make_unique<server_connection>(server_, service_, std::move(client))));
    } catch (const std::bad_alloc &) {
    }
    return true;
}

}  // namespace platform_dev
