// SPDX-License-Identifier: Apache-2.0
// port_channel_database.h: the platform's two sources of port-channel members, and their records.
#ifndef PM_API_COMMON_PORT_CHANNEL_DATABASE_H
#define PM_API_COMMON_PORT_CHANNEL_DATABASE_H

#include <cstddef>
#include <cstdint>

namespace pm {

// Where a member record holds the channel that is asked for, how many members it has, and the first of them.
struct member_record_layout {
    size_t channel;
    size_t count;
    size_t first_member;
};
inline constexpr member_record_layout database_record{6, 18, 26};
inline constexpr member_record_layout map_record{0, 8, 32};

// Room for either record.
inline constexpr size_t member_record_size = 172;

// Chassis of these types keep their members in the port-channel database; all others in the port-channel map.
constexpr bool has_channel_database(uint32_t chassis_type) { return chassis_type == 10 || chassis_type == 11; }

}  // namespace pm

#endif
