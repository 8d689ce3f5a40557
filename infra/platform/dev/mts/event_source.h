// SPDX-License-Identifier: Apache-2.0
// event_source.h: what a server's loop waits for.
#ifndef PLATFORM_DEV_MTS_EVENT_SOURCE_H
#define PLATFORM_DEV_MTS_EVENT_SOURCE_H

#include <cstdint>

namespace platform_dev {

class event_source {
  public:
    event_source() = default;
    event_source(const event_source &) = delete;
    event_source &operator=(const event_source &) = delete;
    virtual ~event_source() = default;

    [[nodiscard]] virtual int descriptor() const = 0;

    // Handles the epoll events of the descriptor. Returns false when the source is done and to be destroyed.
    [[nodiscard]] virtual bool on_event(uint32_t events) = 0;

    // Whether it works for the service `sap` on `node`.
    [[nodiscard]] virtual bool serves(uint32_t, uint32_t) const { return false; }

    // Whether clients meet the service through it.
    [[nodiscard]] virtual bool takes_clients() const { return false; }

    // Gives back at once what others can see of it. It gets no further events.
    virtual void end() {}
};

}  // namespace platform_dev

#endif
