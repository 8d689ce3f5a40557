// SPDX-License-Identifier: Apache-2.0
#include <sys/epoll.h>

#include "bench/exchange/local_socket.h"
#include "bench/exchange/peers.h"
#include "bench/exchange/sd_bus_method.h"

namespace bench {

namespace {

// A connection, or the socket that takes them, in an epoll set.
struct watched {
    int socket;
    bus_owner bus{};  // none: it takes connections
    uint32_t events = 0;

    void control(int epoll, int operation) {
        epoll_event event{};
        event.events = events;
        event.data.ptr = this;
        require(epoll_ctl(epoll, operation, socket, &event) == 0, "epoll_ctl");
    }
};

// A connection that was accepted, as its server.
bus_owner serving_bus(int socket, const std::vector<char> *answer) {
    bus_owner bus = new_bus();
    sd_id128_t id;
    require_bus(sd_id128_randomize(&id), "sd_id128_randomize");
    require_bus(sd_bus_set_fd(bus.get(), socket, socket), "sd_bus_set_fd");
    require_bus(sd_bus_set_server(bus.get(), 1, id), "sd_bus_set_server");
    require_bus(sd_bus_set_anonymous(bus.get(), 1), "sd_bus_set_anonymous");
    require_bus(sd_bus_set_trusted(bus.get(), 1), "sd_bus_set_trusted");
    add_method(bus.get(), answer);
    require_bus(sd_bus_start(bus.get()), "sd_bus_start");
    return bus;
}

// Waits for what the connection asks to wait for.
void follow(int epoll, watched *client) {
    const auto wanted = static_cast<uint32_t>(sd_bus_get_events(client->bus.get()));
    if (wanted == client->events) return;
    client->events = wanted;
    client->control(epoll, EPOLL_CTL_MOD);
}

void take_client(int epoll, int listener, const std::vector<char> *answer) {
    const int socket = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    auto *const client = new watched{socket, serving_bus(socket, answer)};  // deleted when it ends
    client->control(epoll, EPOLL_CTL_ADD);
    follow(epoll, client);
}

void process(int epoll, watched *client) {
    if (!process_all(client->bus.get())) return delete client;
    follow(epoll, client);
}

// One loop over all connections.
void serve_clients(int listener, const std::vector<char> &answer) {
    const int epoll = epoll_create1(EPOLL_CLOEXEC);
    watched taking{.socket = listener, .events = EPOLLIN};
    taking.control(epoll, EPOLL_CTL_ADD);
    for (;;) {
        epoll_event events[32];
        const int count = epoll_wait(epoll, events, std::size(events), -1);
        for (int i = 0; i < count; ++i) {
            auto *const source = static_cast<watched *>(events[i].data.ptr);
            if (source->bus) {
                process(epoll, source);
            } else {
                take_client(epoll, listener, &answer);
            }
        }
    }
}

}  // namespace

rival sd_bus_peer(const std::string &directory, payload_sizes sizes) {
    const std::string path = directory + "/sd_bus";
    return {"sd-bus peer to peer", [=] { return calling(connect_bus(path, false), nullptr, sizes); },
            [=](const readiness &ready) {
                const int listener = bound_socket(SOCK_STREAM, path);
                require(listen(listener, SOMAXCONN) == 0, "listen");
                ready.announce();
                serve_clients(listener, std::vector<char>(sizes.answer));
            }};
}

}  // namespace bench
