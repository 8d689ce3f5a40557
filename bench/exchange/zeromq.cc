// SPDX-License-Identifier: Apache-2.0
#include <zmq.h>

#include <memory>
#include <vector>

#include "bench/exchange/peers.h"

namespace bench {

namespace {

// A socket with a context of its own.
class zmq_socket_owner {
  public:
    explicit zmq_socket_owner(int type) : context_(zmq_ctx_new()), socket_(zmq_socket(context_, type)) {
        require(socket_ != nullptr, "zmq_socket");
    }
    zmq_socket_owner(const zmq_socket_owner &) = delete;
    zmq_socket_owner &operator=(const zmq_socket_owner &) = delete;
    ~zmq_socket_owner() {
        zmq_close(socket_);
        zmq_ctx_term(context_);
    }
    operator void *() const { return socket_; }

  private:
    void *context_;
    void *socket_;
};

// Messages stay where they are received, and payloads are sent from where they lie.
bool receive(void *socket, size_t size) {
    zmq_msg_t message;
    zmq_msg_init(&message);
    const int received = zmq_msg_recv(&message, socket, 0);
    zmq_msg_close(&message);
    return received == static_cast<int>(size);
}

bool send(void *socket, const std::vector<char> &payload) {
    return zmq_send_const(socket, payload.data(), payload.size(), 0) == static_cast<int>(payload.size());
}

}  // namespace

rival zeromq(const std::string &directory, payload_sizes sizes) {
    const std::string address = "ipc://" + directory + "/zmq";
    const auto connect = [=]() -> exchange {
        const auto socket = std::make_shared<zmq_socket_owner>(ZMQ_REQ);
        require(zmq_connect(*socket, address.c_str()) == 0, "zmq_connect");
        return [socket, request = std::vector<char>(sizes.request), answer_size = sizes.answer] {
            require(send(*socket, request) && receive(*socket, answer_size), "ZeroMQ");
        };
    };
    const auto serve = [=](const readiness &ready) {
        const zmq_socket_owner socket(ZMQ_REP);
        require(zmq_bind(socket, address.c_str()) == 0, "zmq_bind");
        ready.announce();
        const std::vector<char> answer(sizes.answer);
        while (receive(socket, sizes.request) && send(socket, answer)) {
        }
    };
    return {"ZeroMQ REQ/REP over ipc", connect, serve};
}

}  // namespace bench
