// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/bare_sockets.h"

#include <memory>
#include <vector>

#include "bench/exchange/local_socket.h"

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
    const std::string path = directory + "/bare";
    const auto connect = [=] {
        const auto socket = std::make_shared<socket_owner>(bound_socket(SOCK_DGRAM, path + std::to_string(getpid())));
        const sockaddr_un server = socket_address(path);
        require(::connect(*socket, reinterpret_cast<const sockaddr *>(&server), sizeof server) == 0, "connect");
        return asking(*socket, socket, sizes);
    };
    const auto serve = [=](const readiness &ready) {
        const socket_owner socket(bound_socket(SOCK_DGRAM, path));
        ready.announce();
        answer_many(socket, sizes);
    };
    return {std::move(name), connect, serve};
}

}  // namespace bench
