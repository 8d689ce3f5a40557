// SPDX-License-Identifier: Apache-2.0
// local_socket.h: sockets with a path.
#ifndef BENCH_EXCHANGE_LOCAL_SOCKET_H
#define BENCH_EXCHANGE_LOCAL_SOCKET_H

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <string>

#include "bench/support/measure.h"

namespace bench {

inline sockaddr_un socket_address(const std::string &path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    require(path.size() < sizeof address.sun_path, path.c_str());
    path.copy(address.sun_path, path.size());
    return address;
}

// A socket of this type that others find at `path`, also where another one was before.
inline int bound_socket(int type, const std::string &path) {
    const sockaddr_un address = socket_address(path);
    unlink(path.c_str());
    const int socket = ::socket(AF_UNIX, type | SOCK_CLOEXEC, 0);
    require(bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, "bind");
    return socket;
}

}  // namespace bench

#endif
