// SPDX-License-Identifier: Apache-2.0
#include "mts/client_connection.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <algorithm>
#include <cerrno>

#include "mts/capture.h"
#include "mts/peer.h"
#include "mts/service_address.h"

namespace platform_dev {

namespace {

// What every system takes as SO_RCVTIMEO; longer waits are made of several.
constexpr uint32_t max_wait_seconds = 24 * 60 * 60;

bool is_answer(const frame_header &header) {
    return header.kind == frame_kind::message_answer || header.kind == frame_kind::cmi_answer;
}

int connect_without_waiting(int socket, const sockaddr_un &address) {
    if (connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0) return 0;
    return errno == ENOENT || errno == ECONNREFUSED ? EHOSTUNREACH : errno;
}

}  // namespace

int client_connection::open(const runtime_directory &directory, uint64_t next_serial) {
    sockaddr_un address{};
    if (!service_address(directory, node_, sap_, address)) return errno;
    unique_fd socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket) return errno;
    if (const int error = connect_without_waiting(socket.get(), address)) return error;
    if (!is_peer_of(socket.get(), directory.owner)) return EPERM;
    if (fcntl(socket.get(), F_SETFL, 0) != 0)  // receives wait
        return errno;
    socket_ = std::move(socket);
    receiver_ = {};
    first_serial_ = next_serial;
    unanswered_ = 0;
    wait_seconds_ = 0;
    return 0;
}

int client_connection::send(const frame_header &header, const void *payload) {
    const int error = send_captured({node_, sap_}, socket_.get(), header, payload);
    if (error == 0) ++unanswered_;
    return error;
}

int client_connection::receive(uint32_t seconds, packet_buffers &buffers, received_frame &frame) {
    if (const int error = limit_wait(seconds)) return error;
    const int flags = seconds == 0 ? MSG_DONTWAIT : 0;
    if (const int error =
            platform_dev::receive(receiver_, socket_.get(), flags, stays_in_buffer::large, buffers, frame))
        return error;
    capture_received({node_, sap_}, socket_.get(), frame);
    return is_answer(frame.header) ? 0 : EPROTO;
}

bool client_connection::count_answer() {
    if (unanswered_ == 0) return false;
    --unanswered_;
    return true;
}

int client_connection::limit_wait(uint32_t seconds) {
    const uint32_t wait = std::min(seconds, max_wait_seconds);
    if (wait == 0 || wait == wait_seconds_) return 0;
    const timeval limit = {static_cast<time_t>(wait), 0};
    if (setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit) != 0) return errno;
    wait_seconds_ = wait;
    return 0;
}

}  // namespace platform_dev
