// SPDX-License-Identifier: Apache-2.0
// readiness.h: one descriptor that tells poll and epoll when a queue has something to receive.
#ifndef PLATFORM_DEV_MTS_READINESS_H
#define PLATFORM_DEV_MTS_READINESS_H

#include "common/unique_fd.h"

namespace platform_dev {

// Costs nothing until it is opened. Functions return 0 or a system error number.
class readiness {
  public:
    [[nodiscard]] bool is_open() const { return bool(epoll_); }
    [[nodiscard]] int descriptor() const { return epoll_.get(); }

    [[nodiscard]] int open();

    // Watches the socket of a connection.
    [[nodiscard]] int watch(int socket);

    // Before a socket is closed. One that is not watched is no harm.
    void forget(int socket);

    // Whether answers wait that have left their sockets.
    void show_kept(bool are_there);

  private:
    unique_fd epoll_;
    unique_fd kept_;  // an eventfd, readable while answers are kept
};

}  // namespace platform_dev

#endif
