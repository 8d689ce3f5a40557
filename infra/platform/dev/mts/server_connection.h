// SPDX-License-Identifier: Apache-2.0
// server_connection.h: one client of a service.
#ifndef PLATFORM_DEV_MTS_SERVER_CONNECTION_H
#define PLATFORM_DEV_MTS_SERVER_CONNECTION_H

#include <optional>

#include "common/unique_fd.h"
#include "mts/event_source.h"
#include "mts/payload.h"
#include "mts/peer.h"
#include "mts/reply.h"
#include "mts/served_service.h"

namespace platform_dev {

class server;

class server_connection final : public event_source {
  public:
    server_connection(server &owner, const service &served, peer client, unique_fd socket)
        : server_(owner), service_(served), client_(std::move(client)), socket_(std::move(socket)) {}

    [[nodiscard]] int descriptor() const override { return socket_.get(); }
    [[nodiscard]] bool on_event(uint32_t events) override;
    [[nodiscard]] bool serves(uint32_t node, uint32_t sap) const override { return service_.is(node, sap); }
    void end() override { socket_.reset(); }

  private:
    // An answer that the client's buffer has no room for yet. Until it went out, no further request is read: a client
    // that does not receive finds its own sends refused at last.
    struct held_answer {
        frame_header header;
        heap_block payload;
    };

    [[nodiscard]] bool serve_request();
    void call_service(const received_frame &frame, mts_reply &reply) const;
    [[nodiscard]] bool answer(const frame_header &request, mts_reply &reply);
    [[nodiscard]] bool send_again(const held_answer &answer);
    [[nodiscard]] int send(const frame_header &header, const void *payload);
    [[nodiscard]] int limit_unread(bool is_in_memory_file);

    server &server_;
    service service_;
    peer client_;
    unique_fd socket_;
    frame_receiver receiver_;
    std::optional<held_answer> held_;
    int whole_buffer_ = 0;  // the size of the send buffer while a small one is in its place, else 0
};

}  // namespace platform_dev

#endif
