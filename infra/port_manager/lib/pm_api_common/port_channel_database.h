// SPDX-License-Identifier: Apache-2.0
// port_channel_database.h: the platform's two sources of port-channel members.
#ifndef PM_API_COMMON_PORT_CHANNEL_DATABASE_H
#define PM_API_COMMON_PORT_CHANNEL_DATABASE_H

#include <cstdint>

namespace pm {

// Chassis of these types keep their members in the port-channel database; all others in the port-channel map.
constexpr bool has_channel_database(uint32_t chassis_type) {
    return chassis_type == 10 || chassis_type == 11;
}

}  // namespace pm

#endif
