// SPDX-License-Identifier: Apache-2.0
// chassis_db.h: publishes the chassis database that the platform's look-ups read: chassis type, modules, slot
// count, port-channel members and the index map.
//
// The database is one memory-mapped file in the run-time directory. Readers take no lock: a sequence counter tells
// them to read again when they met an update. It is written in place, so readers follow every change at once, also
// across a restart of the publisher.
#ifndef PLATFORM_DEV_CHASSIS_DB_H
#define PLATFORM_DEV_CHASSIS_DB_H

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/types.h"

namespace platform_dev {

struct module_entry {
    uint8_t slot;  // counted from 0
    uint16_t card_type;
};

struct port_channel_entry {
    if_index_t if_index;
    std::vector<if_index_t> members;  // at most 16 are published
};

// Where one interface lives.
struct index_map_entry {
    if_index_t if_index;
    uint32_t node;
    uint8_t slot;
    uint8_t port_base;
};

struct chassis {
    uint32_t chassis_type = 0;
    uint8_t slot_count = 0;
    std::vector<module_entry> modules;
    std::vector<port_channel_entry> port_channels;
    std::vector<index_map_entry> index_map;  // any order; main interfaces only
};

// The one writer of the database. Destroying it withdraws what it published: look-ups fail from then on.
class chassis_publisher {
  public:
    // Takes the database of the run-time directory. Null with errno: EWOULDBLOCK when another process publishes there.
    static std::unique_ptr<chassis_publisher> open();

    virtual ~chassis_publisher() = default;
    chassis_publisher(const chassis_publisher &) = delete;
    chassis_publisher &operator=(const chassis_publisher &) = delete;

    // Replaces the whole content. Returns false with errno ENOSPC when a table is longer than the file has room for.
    [[nodiscard]] virtual bool publish(const chassis &content) = 0;

  protected:
    chassis_publisher() = default;
};

}  // namespace platform_dev

#endif
