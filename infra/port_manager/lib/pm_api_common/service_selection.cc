// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/service_selection.h"

#include <array>
#include <cstdio>

#include "platform/if_index.h"
#include "platform/pdb.h"
#include "pm_api_common/interface_type.h"
#include "pm_api_common/port_channel_database.h"
#include "port_mgr/opcodes.h"
#include "protocol/byte_order.h"
#include "protocol/interface_owner.h"

namespace {

constexpr uint32_t fibre_channel_kind = 1;
constexpr uint32_t ethernet_kind = 2;

// The first member of the channel, or 0 when it has none or the look-up fails.
if_index_t first_member(if_index_t channel) {
    uint32_t chassis_type = 0;
    const bool known = pdb_get_chassis_type(&chassis_type) == 0;
    const pm::member_record_layout layout =
        known && pm::has_channel_database(chassis_type) ? pm::database_record : pm::map_record;
    std::array<uint8_t, pm::member_record_size> record{};
    if (get_port_channel_members(chassis_type, channel, record.data()) != 0) return 0;
    if (pm::load<uint32_t>(&record[layout.count]) == 0) return 0;
    return pm::load<if_index_t>(&record[layout.first_member]);
}

bool is_ethernet_port(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    return if_index_get_type(if_index, &type) == 0 && type == IF_TYPE_ETHERNET;
}

}  // namespace

uint32_t pm_get_mts_sap(if_index_t if_index) {
    uint8_t type = IF_TYPE_NONE;
    if (if_index_get_type(if_index, &type) != 0) {
        std::printf("%s: if_index_get_type failed\n", __func__);
        return PM_SAP_PORT_MANAGER;
    }
    if (pm::is_port_channel_type(type)) {
        return pm_is_ether_channel(if_index) != 0 ? PM_SAP_ETHERNET_CHANNEL : PM_SAP_PORT_MANAGER;
    }
    return pm::owner_of_type(type);
}

int32_t pm_is_ether_channel(if_index_t if_index) {
    return static_cast<uint8_t>(pm_port_channel_type(if_index)) == ethernet_kind ? 1 : 0;
}

uint32_t pm_port_channel_type(if_index_t if_index) {
    if (if_index_is_port_channel_sub_interface(if_index) != 0) return ethernet_kind;
    const if_index_t member = first_member(if_index);
    return member != 0 && is_ethernet_port(member) ? ethernet_kind : fibre_channel_kind;
}
