// SPDX-License-Identifier: Apache-2.0
/**
 * @defgroup platform_dev_chassis_db chassis_db.h: the chassis database
 * @ingroup platform_dev
 * @brief Publishes the chassis database that the platform's look-ups read: chassis type, modules, slot count,
 *     port-channel members and the index map. For C++.
 *
 * The database is one memory-mapped file in the run-time directory. Publisher and readers share no lock: a sequence
 * counter tells a reader to read again when it met an update. The file is written in place, so readers follow every
 * change at once, also across a restart of the publisher. A publisher that dies leaves the database as it was, or
 * unreadable when it died within an update, until the next one takes it.
 * @{
 */
#ifndef PLATFORM_DEV_CHASSIS_DB_H
#define PLATFORM_DEV_CHASSIS_DB_H

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/types.h"

/** What the development platform offers to C++. */
namespace platform_dev {

/** A module. */
struct module_entry {
    uint8_t slot;        ///< counted from 0
    uint16_t card_type;  ///< as pdb_get_mod_info() tells it
};

/** A port channel. */
struct port_channel_entry {
    if_index_t if_index;              ///< the channel
    std::vector<if_index_t> members;  ///< at most 16 are published
};

/** Where one interface lives. */
struct index_map_entry {
    if_index_t if_index;  ///< the interface
    uint32_t node;        ///< the address of the node that owns it
    uint8_t slot;         ///< the slot of its card
    uint8_t port_base;    ///< the port base of its card
};

/** All that the database holds. */
struct chassis {
    uint32_t chassis_type = 0;                      ///< as pdb_get_chassis_type() tells it
    uint8_t slot_count = 0;                         ///< module slots
    std::vector<module_entry> modules;              ///< in any order
    std::vector<port_channel_entry> port_channels;  ///< in any order
    std::vector<index_map_entry> index_map;         ///< in any order; main interfaces only
};

/** The one writer of the database. It belongs to one thread at a time. */
class chassis_publisher {
  public:
    /**
     * Takes the database of the run-time directory and empties it.
     *
     * @return The publisher, or null with errno: EWOULDBLOCK when another publisher is at work there, else what the
     *     run-time directory or the file system says.
     */
    static std::unique_ptr<chassis_publisher> open();

    /** Withdraws what was published: look-ups fail from then on. */
    ~chassis_publisher();
    chassis_publisher(const chassis_publisher &) = delete;
    chassis_publisher &operator=(const chassis_publisher &) = delete;

    /**
     * Lets those read the database who may enter the run-time directory, after that was shared with a group.
     *
     * @return False with errno on failure.
     */
    [[nodiscard]] bool follow_sharing();

    /**
     * Replaces the whole content.
     *
     * @param[in] content  What to publish; of two entries for one slot or interface the first counts.
     * @return False with errno ENOSPC, and nothing is published, when a table is longer than the file has room for: 64
     *     modules, 256 port channels, 4096 entries of the index map.
     */
    [[nodiscard]] bool publish(const chassis &content);

  private:
    class database_file;
    explicit chassis_publisher(std::unique_ptr<database_file> file);
    std::unique_ptr<database_file> file_;
};

}  // namespace platform_dev

/** @} */
#endif
