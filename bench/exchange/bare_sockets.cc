// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/bare_sockets.h"

#include <sys/un.h>
#include <unistd.h>

#include <memory>
#include <vector>

namespace bench {

namespace {

class socket_owner {
  public:
    explicit socket_owner(int socket) : socket_(socket) { require(socket >= 0, "socket"); }
    socket_owner(const socket_owner &) = delete;
    socket_owner &operator=(const socket_owner &) = delete;
    ~socket_owner() { close(socket_); }
    operator int() const { return socket_; }

  private:
    int socket_;
};

struct socket_pair {
    std::unique_ptr<socket_owner> client;
    std::unique_ptr<socket_owner> server;
};

std::shared_ptr<const socket_pair> make_pair(int socket_type) {
    int ends[2];
    require(socketpair(AF_UNIX, socket_type | SOCK_CLOEXEC, 0, ends) == 0, "socketpair");
    return std::make_shared<socket_pair>(std::make_unique<socket_owner>(ends[0]),
                                         std::make_unique<socket_owner>(ends[1]));
}

// A datagram socket with this name.
std::shared_ptr<socket_owner> bound_socket(const sockaddr_un &name) {
    auto socket = std::make_shared<socket_owner>(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    require(bind(*socket, reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0, "bind");
    return socket;
}

sockaddr_un socket_name(const std::string &path) {
    sockaddr_un name{};
    name.sun_family = AF_UNIX;
    path.copy(name.sun_path, sizeof name.sun_path - 1);
    return name;
}

// Streams are read until all is there; the other types give it at once.
bool receive(int socket, std::vector<char> &into) {
    return recv(socket, into.data(), into.size(), MSG_WAITALL) == static_cast<ssize_t>(into.size());
}

void answer_one(int socket, payload_sizes sizes) {
    std::vector<char> request(sizes.request);
    const std::vector<char> answer(sizes.answer);
    while (receive(socket, request) && send(socket, answer.data(), answer.size(), MSG_NOSIGNAL) > 0) {
    }
}

void answer_many(int socket, payload_sizes sizes) {
    std::vector<char> request(sizes.request);
    const std::vector<char> answer(sizes.answer);
    for (;;) {
        sockaddr_un client;
        socklen_t size = sizeof client;
        auto *const address = reinterpret_cast<sockaddr *>(&client);
        require(recvfrom(socket, request.data(), request.size(), 0, address, &size) > 0, "recvfrom");
        // A client that is gone needs no answer.
        static_cast<void>(sendto(socket, answer.data(), answer.size(), MSG_NOSIGNAL, address, size));
    }
}

// `owner` keeps the socket open.
exchange asking(int socket, std::shared_ptr<const void> owner, payload_sizes sizes) {
    return [socket, owner, request = std::vector<char>(sizes.request),
            answer = std::vector<char>(sizes.answer)]() mutable {
        require(send(socket, request.data(), request.size(), MSG_NOSIGNAL) > 0 && receive(socket, answer),
                "bare socket");
    };
}

}  // namespace

rival bare_pair(std::string name, int socket_type, payload_sizes sizes) {
    const auto pair = make_pair(socket_type);
    return {std::move(name), [=] { return asking(*pair->client, pair, sizes); },
            [=](const readiness &ready) {
                ready.announce();
                answer_one(*pair->server, sizes);
            }};
}

rival bare_datagrams(std::string name, const std::string &directory, payload_sizes sizes) {
    const sockaddr_un service_name = socket_name(directory + "/bare");
    const auto connect = [=] {
        const auto socket = bound_socket(socket_name(directory + "/bare." + std::to_string(getpid())));
        require(::connect(*socket, reinterpret_cast<const sockaddr *>(&service_name), sizeof service_name) == 0,
                "connect");
        return asking(*socket, socket, sizes);
    };
    const auto serve = [=](const readiness &ready) {
        unlink(service_name.sun_path);
        const auto socket = bound_socket(service_name);
        ready.announce();
        answer_many(*socket, sizes);
    };
    return {std::move(name), connect, serve};
}

}  // namespace bench
