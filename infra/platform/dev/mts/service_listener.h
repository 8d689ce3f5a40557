// SPDX-License-Identifier: Apache-2.0
// service_listener.h: takes the clients of one service.
#ifndef PLATFORM_DEV_MTS_SERVICE_LISTENER_H
#define PLATFORM_DEV_MTS_SERVICE_LISTENER_H

#include <sys/un.h>

#include "common/unique_fd.h"
#include "mts/event_source.h"
#include "mts/served_service.h"

namespace platform_dev {

class server;

// While it lives it holds the lock on the service's lock file, so a socket met under a free lock is a dead service's.
class service_listener final : public event_source {
  public:
    service_listener(server &owner, const service &listened) : server_(owner), service_(listened) {}
    ~service_listener() override;

    // Returns 0 or a system error number: EADDRINUSE when a live service answers there.
    [[nodiscard]] int open();

    [[nodiscard]] int descriptor() const override { return socket_.get(); }
    [[nodiscard]] bool on_event(uint32_t events) override;
    [[nodiscard]] bool serves(uint32_t node, uint32_t sap) const override { return service_.is(node, sap); }
    [[nodiscard]] bool takes_clients() const override { return true; }
    void end() override;

  private:
    [[nodiscard]] int lock();
    [[nodiscard]] int listen();
    void take(unique_fd client);

    server &server_;
    service service_;
    unique_fd lock_;
    sockaddr_un address_{};
    unique_fd socket_;
};

}  // namespace platform_dev

#endif
