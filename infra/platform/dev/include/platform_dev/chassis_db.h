// SPDX-License-Identifier: Apache-2.0
// chassis_db.h: publishes the chassis database that the platform's look-ups read: chassis type, modules, slot
// count, port-channel members and the index map.
//
// The database is one memory-mapped file in the run-time directory. Publisher and readers share no lock: a sequence
// counter tells a reader to read again when it met an update. The file is written in place, so readers follow every
// change at once, also across a restart of the publisher. A publisher that dies leaves the database as it was, or
// unreadable when it died within an update, until the next one takes it.
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

// The one writer of the database. It belongs to one thread at a time.
class chassis_publisher {
  public:
    // Takes the database of the run-time directory and empties it. Null with errno: EWOULDBLOCK when another
    // publisher is at work there, else what the run-time directory or the file system says.
    static std::unique_ptr<chassis_publisher> open();

    // Withdraws what was published: look-ups fail from then on.
    ~chassis_publisher();
    chassis_publisher(const chassis_publisher &) = delete;
    chassis_publisher &operator=(const chassis_publisher &) = delete;

    // Lets those read it who may enter the run-time directory, after that was shared with a group. Returns false with
    // errno.
    [[nodiscard]] bool follow_sharing();

    // Replaces the whole content; of two entries for one slot or interface the first counts. Returns false with errno
    // ENOSPC, and publishes nothing, when a table is longer than the file has room for: 64 modules, 256 port
    // channels, 4096 entries of the index map.
    [[nodiscard]] bool publish(const chassis &content);

  private:
    class database_file;
    explicit chassis_publisher(std::unique_ptr<database_file> file);
    std::unique_ptr<database_file> file_;
};

}  // namespace platform_dev

#endif
