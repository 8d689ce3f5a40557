// SPDX-License-Identifier: Apache-2.0
// interface_owner.h: which service owns which type of interface.
#ifndef PROTOCOL_INTERFACE_OWNER_H
#define PROTOCOL_INTERFACE_OWNER_H

#include <array>
#include <cstdint>

#include "platform/if_index.h"
#include "port_mgr/opcodes.h"

namespace pm {

struct interface_owner {
    uint8_t type;
    uint32_t sap;
};

// Every other type is the port manager's. So are port channels, unless they are Ethernet channels.
inline constexpr auto interface_owners = std::to_array({
    interface_owner{IF_TYPE_ETHERNET, PM_SAP_ETHERNET},
    interface_owner{IF_TYPE_MGMT, PM_SAP_MGMT},
    interface_owner{IF_TYPE_LOOPBACK, PM_SAP_ETHERNET_CHANNEL},
    interface_owner{IF_TYPE_ETHERNET_SFP, PM_SAP_ETHERNET_CHANNEL},
});

constexpr bool is_port_channel_type(uint8_t type) { return type == IF_TYPE_PORT_CHANNEL || type == IF_TYPE_BUNDLE; }

constexpr uint32_t owner_of_type(uint8_t type) {
    for (const interface_owner &owner : interface_owners) {
        if (owner.type == type) return owner.sap;
    }
    return PM_SAP_PORT_MANAGER;
}

}  // namespace pm

#endif
