// SPDX-License-Identifier: Apache-2.0
// chassis_reader.h: look-ups in the published chassis database.
//
// All are thread-safe and take no lock that another process could hold. They return nothing when nothing is published,
// when the entry is not there, and when the publisher died within an update.
#ifndef PLATFORM_DEV_CHASSIS_DB_CHASSIS_READER_H
#define PLATFORM_DEV_CHASSIS_DB_CHASSIS_READER_H

#include <array>
#include <optional>

#include "chassis_db/chassis_image.h"
#include "platform_dev/chassis_db.h"

namespace platform_dev {

struct chassis_summary {
    uint32_t chassis_type;
    uint8_t slot_count;
};

struct member_list {
    uint32_t count;
    std::array<if_index_t, max_members> members;
};

std::optional<chassis_summary> find_chassis();
std::optional<module_entry> find_module(uint8_t slot);
std::optional<member_list> find_port_channel(if_index_t channel);

// The entry of exactly this interface.
std::optional<index_map_entry> find_index_map_entry(if_index_t index);

}  // namespace platform_dev

#endif
