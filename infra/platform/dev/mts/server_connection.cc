// SPDX-License-Identifier: Apache-2.0
#include "mts/server_connection.h"

#include <sys/socket.h>

#include <cerrno>
#include <cstring>
#include <new>

#include "mts/capture.h"
#include "mts/server.h"

namespace platform_dev {

namespace {

bool is_request(const frame_header &header) {
    return header.kind == frame_kind::message_request || header.kind == frame_kind::cmi_request;
}

frame_header answer_header(const frame_header &request, const mts_reply &reply, uint32_t message_id) {
    const bool is_cmi = request.kind == frame_kind::cmi_request;
    frame_header header{};
    header.kind = is_cmi ? frame_kind::cmi_answer : frame_kind::message_answer;
    header.opcode = request.opcode;
    header.token = request.token;
    header.message_id = message_id;
    header.payload_size = reply.payload_size;
    header.cmi_word = is_cmi ? reply.status : 0;
    return header;
}

// The payload in a block of its own.
heap_block take_payload(mts_reply &reply) {
    if (reply.payload == reply.block.get()) {
        reply.capacity = 0;
        return std::move(reply.block);
    }
    heap_block copy(std::malloc(reply.payload_size));
    if (!copy) throw std::bad_alloc();
    std::memcpy(copy.get(), reply.payload, reply.payload_size);
    return copy;
}

}  // namespace

// A request that there is no memory for costs its client the connection, and the others nothing.
bool server_connection::on_event(uint32_t events) try {
    if (held_) return send_again(*held_);
    return (events & EPOLLIN) && serve_request();
} catch (const std::bad_alloc &) {
    return false;
}

bool server_connection::serve_request() {
    received_frame frame;
    const int error = receive(receiver_, socket_.get(), MSG_DONTWAIT, stays_in_buffer::all, server_.buffers(), frame);
    if (error == EAGAIN) return true;
    if (error != 0) return false;
    capture_received({service_.node, service_.sap}, socket_.get(), frame);
    if (!is_request(frame.header)) return false;
    mts_reply &reply = server_.reply();
    call_service(frame, reply);
    if (frame.is_packet_buffer) server_.buffers().give_back(std::move(frame.payload));
    return !reply.is_given || answer(frame.header, reply);
}

void server_connection::call_service(const received_frame &frame, mts_reply &reply) const {
    reply.is_given = false;
    const frame_header &header = frame.header;
    const bool is_cmi = header.kind == frame_kind::cmi_request;
    const mts_request_t request = {.node = service_.node,
                                   .sap = service_.sap,
                                   .opcode = header.opcode,
                                   .is_cmi = is_cmi,
                                   .kind = is_cmi ? header.cmi_word : 0,
                                   .payload_size = header.payload_size,
                                   .payload = frame.payload.get(),
                                   .client = {.uid = client_.user,
                                              .group_count = static_cast<uint32_t>(client_.groups.size()),
                                              .groups = client_.groups.data()}};
    service_.handle(service_.context, &request, &reply);
}

bool server_connection::answer(const frame_header &request, mts_reply &reply) {
    const frame_header header = answer_header(request, reply, server_.next_message_id());
    const int error = send(header, reply.payload);
    if (error != EAGAIN) return error == 0;
    held_ = held_answer{header, take_payload(reply)};
    return server_.wait_for(*this, EPOLLOUT) == 0;
}

bool server_connection::send_again(const held_answer &answer) {
    const int error = send(answer.header, answer.payload.get());
    if (error != 0) return error == EAGAIN;
    held_.reset();
    return server_.wait_for(*this, EPOLLIN) == 0;
}

int server_connection::send(const frame_header &header, const void *payload) {
    if (const int error = limit_unread(header.payload_size > max_packet_payload)) return error;
    return send_captured({service_.node, service_.sap}, socket_.get(), header, payload);
}

// In the send buffer a memory file counts for no more than its header. In one of the least size that there is, a client
// that does not read has a few of them, instead of hundreds.
int server_connection::limit_unread(bool is_in_memory_file) {
    if (is_in_memory_file == (whole_buffer_ > 0)) return 0;
    int whole = whole_buffer_;
    socklen_t length = sizeof whole;
    if (is_in_memory_file && getsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &whole, &length) != 0) return errno;
    const int size = is_in_memory_file ? 0 : whole / 2;  // the kernel doubles what it is told
    if (setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size) != 0) return errno;
    whole_buffer_ = is_in_memory_file ? whole : 0;
    return 0;
}

}  // namespace platform_dev
