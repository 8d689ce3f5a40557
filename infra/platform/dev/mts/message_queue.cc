// SPDX-License-Identifier: Apache-2.0
#include "mts/message_queue.h"

#include <algorithm>
#include <cerrno>

#include "platform_dev/mts_dev.h"

namespace platform_dev {

namespace {

// A token is the number of its connection, counted from 1, in the high byte, and the low bits of the request's serial
// number below: it tells where the answer comes from.
constexpr uint32_t serial_bits = 24;
constexpr uint32_t serial_mask = (1u << serial_bits) - 1;
constexpr size_t max_connections = UINT32_MAX >> serial_bits;

// Beyond this the oldest kept answers are given up.
constexpr size_t max_kept = 1024;
constexpr size_t max_kept_bytes = 4 * static_cast<size_t>(MTS_MAX_PAYLOAD);

bool has_ended(int send_error) { return send_error == EPIPE || send_error == ECONNRESET; }

size_t memory_of(const received_frame &frame) {
    return frame.is_packet_buffer ? max_packet_payload : frame.header.payload_size;
}

}  // namespace

int message_queue::send(uint32_t node, uint32_t sap, frame_header &header, const void *payload) {
    if (header.payload_size > MTS_MAX_PAYLOAD) return EMSGSIZE;
    client_connection *connection = connection_to(node, sap);
    if (!connection) return EMFILE;
    header.token = next_token(*connection);
    header.message_id = static_cast<uint32_t>(next_serial_);
    const int error = send_over(*connection, header, payload);
    if (error == 0) ++next_serial_;
    return has_ended(error) ? EHOSTUNREACH : error;
}

int message_queue::await(uint32_t token, frame_kind kind, uint32_t seconds, received_frame &answer) {
    if (take_kept(token, answer)) return 0;
    client_connection *connection = connection_of(token);
    if (!connection) return EINVAL;
    if (!connection->carried(serial_of(token))) return ECONNRESET;
    const deadline limit(seconds);
    const awaited_answer awaited{token, kind};
    // An answer that came twice may have been counted for this one.
    const awaited_answer *const owed = connection->owes_answers() ? &awaited : nullptr;
    int error = receive_from(*connection, seconds, answer, owed);
    while (error != 0 || !awaited.is(answer.header)) {
        if (error == 0) {
            keep(std::move(answer));
        } else if (error == EAGAIN) {
            pollfd readable = {connection->descriptor(), POLLIN, 0};
            if (const int wait_error = limit.wait(&readable, 1)) return wait_error;
        } else {
            return error;
        }
        error = receive_from(*connection, 0, answer, owed);
    }
    return 0;
}

int message_queue::next(uint32_t seconds, received_frame &answer) {
    if (!kept_.empty()) return take_kept(kept_.front().header.token, answer) ? 0 : EINVAL;
    const deadline limit(seconds);
    for (;;) {
        client_connection *ready = nullptr;
        if (const int error = wait_for_any(limit, ready)) return error;
        const int error = receive_from(*ready, 0, answer);
        if (error == 0 && answer.header.kind == frame_kind::message_answer) return 0;
        if (error != 0 && error != EAGAIN) return error;
    }
}

int message_queue::readable_descriptor(int &descriptor) {
    if (!readiness_.is_open())
        if (const int error = open_readiness()) return error;
    descriptor = readiness_.descriptor();
    return 0;
}

client_connection *message_queue::connection_to(uint32_t node, uint32_t sap) {
    const auto found = std::find_if(connections_.begin(), connections_.end(),
                                    [&](const client_connection &known) { return known.leads_to(node, sap); });
    if (found != connections_.end()) return &*found;
    return connections_.size() < max_connections ? &connections_.emplace_back(node, sap) : nullptr;
}

client_connection *message_queue::connection_of(uint32_t token) {
    const size_t number = token >> serial_bits;
    if (number == 0 || number > connections_.size() || serial_of(token) == 0) return nullptr;
    return &connections_[number - 1];
}

uint32_t message_queue::next_token(const client_connection &connection) const {
    const auto number = static_cast<uint32_t>(&connection - connections_.data()) + 1;
    return number << serial_bits | (static_cast<uint32_t>(next_serial_) & serial_mask);
}

// The latest serial number with the token's low bits, or 0 when there was none.
uint64_t message_queue::serial_of(uint32_t token) const {
    const uint64_t back = ((next_serial_ - 1 - token) & serial_mask) + 1;
    return next_serial_ > back ? next_serial_ - back : 0;
}

int message_queue::send_over(client_connection &connection, const frame_header &header, const void *payload) {
    if (connection.is_open()) {
        const int error = connection.send(header, payload);
        if (!has_ended(error)) return error;
        received_frame answer;  // what the service answered before it ended
        while (receive_from(connection, 0, answer) == 0) keep(std::move(answer));
    }
    if (const int error = open(connection)) return error;
    return connection.send(header, payload);
}

int message_queue::open(client_connection &connection) {
    close(connection);
    if (const int error = connection.open(directory_, next_serial_)) return error;
    const int error = readiness_.watch(connection.descriptor());
    if (error != 0) close(connection);
    return error;
}

// A process that was forked may still have the socket, so that closing it here does not end the watch.
void message_queue::close(client_connection &connection) {
    readiness_.forget(connection.descriptor());
    connection.close();
}

// What was opened and kept before anybody asked for the descriptor counts, too.
int message_queue::open_readiness() {
    readiness opened;
    if (const int error = opened.open()) return error;
    for (const client_connection &connection : connections_)
        if (connection.is_open())
            if (const int error = opened.watch(connection.descriptor())) return error;
    opened.show_kept(!kept_.empty());
    readiness_ = std::move(opened);
    return 0;
}

// `owed` is an answer that is good even when there were as many as requests already.
int message_queue::receive_from(client_connection &connection, uint32_t seconds, received_frame &answer,
                                const awaited_answer *owed) {
    int error = connection.receive(seconds, buffers_, answer);
    const auto is_good = [&] {
        const bool is_due = connection.count_answer() || (owed && owed->is(answer.header));
        return is_due && connection_of(answer.header.token) == &connection;
    };
    if (error == 0 && !is_good()) error = EPROTO;  // it answers what it was not asked, or another service was
    if (error == ECONNRESET || error == EPROTO) close(connection);
    return error;
}

int message_queue::wait_for_any(const deadline &limit, client_connection *&ready) {
    std::vector<pollfd> descriptors;
    descriptors.reserve(connections_.size());
    for (const client_connection &connection : connections_)
        descriptors.push_back({connection.descriptor(), POLLIN, 0});  // poll skips the closed ones' -1
    if (const int error = limit.wait(descriptors.data(), descriptors.size())) return error;
    const auto first = std::find_if(descriptors.begin(), descriptors.end(),
                                    [](const pollfd &descriptor) { return descriptor.revents != 0; });
    ready = &connections_[static_cast<size_t>(first - descriptors.begin())];
    return 0;
}

bool message_queue::take_kept(uint32_t token, received_frame &answer) {
    const auto found = std::find_if(kept_.begin(), kept_.end(),
                                    [token](const received_frame &kept) { return kept.header.token == token; });
    if (found == kept_.end()) return false;
    answer = std::move(*found);
    kept_.erase(found);
    kept_bytes_ -= memory_of(answer);
    if (kept_.empty()) readiness_.show_kept(false);
    return true;
}

void message_queue::keep(received_frame answer) {
    if (answer.header.kind != frame_kind::message_answer) return;  // nobody asks again for what cmi_req_resp gave up
    kept_bytes_ += memory_of(answer);
    kept_.push_back(std::move(answer));
    readiness_.show_kept(true);
    while (kept_.size() > max_kept || kept_bytes_ > max_kept_bytes) {
        kept_bytes_ -= memory_of(kept_.front());
        kept_.erase(kept_.begin());
    }
}

}  // namespace platform_dev
