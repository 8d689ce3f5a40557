// SPDX-License-Identifier: Apache-2.0
// message_queue.h: what stands behind a handle: its connections, and the answers that came before they were asked for.
#ifndef PLATFORM_DEV_MTS_MESSAGE_QUEUE_H
#define PLATFORM_DEV_MTS_MESSAGE_QUEUE_H

#include <cstdint>
#include <vector>

#include "mts/client_connection.h"
#include "mts/deadline.h"
#include "mts/readiness.h"

namespace platform_dev {

// What tells the answer to one request.
struct awaited_answer {
    uint32_t token;
    frame_kind kind;

    [[nodiscard]] bool is(const frame_header &header) const { return header.token == token && header.kind == kind; }
};

// Belongs to one thread at a time. Functions return 0 or a system error number and may throw std::bad_alloc.
class message_queue {
  public:
    explicit message_queue(const runtime_directory &directory) : directory_(directory) {}

    // Sends `payload`, header.payload_size bytes, and fills in the header's token and message id. EHOSTUNREACH: no
    // such service; EAGAIN: its queue is full; EMSGSIZE: the payload is too large.
    [[nodiscard]] int send(uint32_t node, uint32_t sap, frame_header &header, const void *payload);

    // Waits for the answer of this kind that carries the token. ETIMEDOUT: it did not come within `seconds`; EINTR: a
    // signal came; ECONNRESET: the service ended; EPROTO: what it sent is no answer; EINVAL: no request has that token.
    [[nodiscard]] int await(uint32_t token, frame_kind kind, uint32_t seconds, received_frame &answer);

    // Waits for the next message of any request. Errors are those of await.
    [[nodiscard]] int next(uint32_t seconds, received_frame &answer);

    // Sets `descriptor` to one that is readable while an answer can be received without waiting, or a service has
    // ended. It is the queue's.
    [[nodiscard]] int readable_descriptor(int &descriptor);

    // Takes back the buffer of a released message.
    void give_back(heap_block buffer) { buffers_.give_back(std::move(buffer)); }

    // The last error number of this handle.
    [[nodiscard]] int last_error() const { return last_error_; }
    void set_last_error(int error) { last_error_ = error; }

  private:
    [[nodiscard]] client_connection *connection_to(uint32_t node, uint32_t sap);
    [[nodiscard]] client_connection *connection_of(uint32_t token);
    [[nodiscard]] uint32_t next_token(const client_connection &connection) const;
    [[nodiscard]] uint64_t serial_of(uint32_t token) const;
    [[nodiscard]] int open(client_connection &connection);
    void close(client_connection &connection);
    [[nodiscard]] int open_readiness();
    [[nodiscard]] int send_over(client_connection &connection, const frame_header &header, const void *payload);
    [[nodiscard]] int receive_from(client_connection &connection, uint32_t seconds, received_frame &answer,
                                   const awaited_answer *owed = nullptr);
    [[nodiscard]] int wait_for_any(const deadline &limit, client_connection *&ready);
    [[nodiscard]] bool take_kept(uint32_t token, received_frame &answer);
    void keep(received_frame answer);

    runtime_directory directory_;
    std::vector<client_connection> connections_;
    std::vector<received_frame> kept_;  // messages only, the oldest first
    size_t kept_bytes_ = 0;
    readiness readiness_;
    packet_buffers buffers_;
    uint64_t next_serial_ = 1;
    int last_error_ = 0;
};

}  // namespace platform_dev

#endif
