// SPDX-License-Identifier: Apache-2.0
// server.h: the event loop that serves.
#ifndef PLATFORM_DEV_MTS_SERVER_H
#define PLATFORM_DEV_MTS_SERVER_H

#include <sys/epoll.h>

#include <memory>
#include <unordered_map>
#include <vector>

#include "common/runtime_dir.h"
#include "common/unique_fd.h"
#include "mts/event_source.h"
#include "mts/payload.h"
#include "mts/reply.h"
#include "mts/served_service.h"

namespace platform_dev {

// Functions return 0 or a system error number and may throw std::bad_alloc.
class server {
  public:
    // Before anything else.
    [[nodiscard]] int open();

    [[nodiscard]] int add_service(const service &added);
    [[nodiscard]] int remove_service(uint32_t node, uint32_t sap);
    [[nodiscard]] int add_fd(int fd, mts_fd_handler_t handler, void *context);
    [[nodiscard]] int run();
    void stop() const;

    // For event sources: adds one, which waits for input, and changes what one waits for.
    [[nodiscard]] int add(std::unique_ptr<event_source> source);
    [[nodiscard]] int wait_for(event_source &source, uint32_t events);

    // For listeners: where their services meet clients.
    [[nodiscard]] const runtime_directory &directory() const { return directory_; }

    // For connections: accepts one that there is no descriptor left for, and closes it.
    void turn_away(int listening_socket);
    // For connections: what all of them use, one request after the other.
    packet_buffers &buffers() { return buffers_; }
    mts_reply &reply() { return reply_; }
    uint32_t next_message_id() { return ++last_message_id_; }

  private:
    static void end_run(void *self, int stop_fd);

    runtime_directory directory_{};
    unique_fd epoll_;
    unique_fd stop_;
    unique_fd spare_;  // makes room when a client has to be turned away
    std::unordered_map<event_source *, std::unique_ptr<event_source>> sources_;
    std::vector<std::unique_ptr<event_source>> removed_;  // for events of this round that meet them
    bool running_ = false;
    packet_buffers buffers_;
    mts_reply reply_;
    uint32_t last_message_id_ = 0;
};

}  // namespace platform_dev

#endif
