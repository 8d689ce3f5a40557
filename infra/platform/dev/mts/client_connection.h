// SPDX-License-Identifier: Apache-2.0
// client_connection.h: a handle's connection to one service.
#ifndef PLATFORM_DEV_MTS_CLIENT_CONNECTION_H
#define PLATFORM_DEV_MTS_CLIENT_CONNECTION_H

#include <cstdint>

#include "common/runtime_dir.h"
#include "common/unique_fd.h"
#include "mts/payload.h"

namespace platform_dev {

class client_connection {
  public:
    client_connection(uint32_t node, uint32_t sap) : node_(node), sap_(sap) {}

    [[nodiscard]] bool leads_to(uint32_t node, uint32_t sap) const { return node == node_ && sap == sap_; }
    [[nodiscard]] bool is_open() const { return bool(socket_); }
    [[nodiscard]] int descriptor() const { return socket_.get(); }

    // Whether `serial`, the number of a request, went out since this connection was opened.
    [[nodiscard]] bool carried(uint64_t serial) const { return is_open() && serial >= first_serial_; }

    // Connects to the service in the run-time directory; the requests from `next_serial` on go over it. Returns 0 or
    // a system error number: EHOSTUNREACH when nobody serves there, EAGAIN when too many are waiting to be served,
    // EACCES when the socket is not for us, EPERM when it is not the directory's owner who serves there.
    [[nodiscard]] int open(const runtime_directory &directory, uint64_t next_serial);
    void close() { socket_.reset(); }

    // Sends without waiting. Results are those of send_frame.
    [[nodiscard]] int send(const frame_header &header, const void *payload);

    // Whether an answer is still to come.
    [[nodiscard]] bool owes_answers() const { return unanswered_ > 0; }

    // Receives the next frame, waiting up to `seconds`; 0 does not wait. Results are those of frame_receiver::receive,
    // and ENOMEM. After ECONNRESET and EPROTO the connection is of no use any more.
    [[nodiscard]] int receive(uint32_t seconds, packet_buffers &buffers, received_frame &frame);

    // Counts an answer that was received. Returns false when there are more answers than requests.
    [[nodiscard]] bool count_answer();

  private:
    [[nodiscard]] int limit_wait(uint32_t seconds);

    uint32_t node_;
    uint32_t sap_;
    unique_fd socket_;
    frame_receiver receiver_;
    uint64_t first_serial_ = 0;
    uint64_t unanswered_ = 0;    // requests less answers; one that comes twice counts for another one, too
    uint32_t wait_seconds_ = 0;  // what SO_RCVTIMEO holds; 0 stands for no limit there
};

}  // namespace platform_dev

#endif
