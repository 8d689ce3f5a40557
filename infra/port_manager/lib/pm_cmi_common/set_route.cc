// SPDX-License-Identifier: Apache-2.0
#include "pm_cmi_common/set_route.h"

#include "platform/if_index.h"
#include "platform/pdb.h"
#include "pm_api_common/interface_type.h"
#include "pm_api_common/port_channel_database.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/service_selection.h"
#include "protocol/attribute_set.h"

namespace pm {
namespace {

// What the Ethernet channel service is asked first.
constexpr attribute_set ethernet_attributes{1,  2,  3,  4,  5,  6,  17, 23, 29, 31, 36, 44, 50, 51, 52,
                                            53, 55, 56, 57, 58, 59, 61, 62, 67, 68, 71, 72, 84, 85};

// What no other service knows.
constexpr attribute_set first_only_attributes{51, 52};

// Chassis whose Ethernet channel service is not asked first.
constexpr bool has_one_owner(uint32_t chassis_type) { return chassis_type == 4 || chassis_type == 5; }

// Where an attribute of a port channel belongs, whoever owns the channel.
struct channel_attribute_owner {
    uint8_t attribute;
    uint32_t of_channel;
    uint32_t of_sub_interface;
};
constexpr auto channel_attribute_owners = std::to_array({
    channel_attribute_owner{PM_ATTR_ADMIN_STATE, PM_SAP_PORT_MANAGER, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{PM_ATTR_TRUNK_MODE, PM_SAP_PORT_MANAGER, PM_SAP_PORT_MANAGER},
    channel_attribute_owner{PM_ATTR_DOWN_ON_LINK_FAILURE, PM_SAP_PORT_MANAGER, PM_SAP_PORT_MANAGER},
    channel_attribute_owner{PM_ATTR_DUPLEX, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{PM_ATTR_AUTO_NEG, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{PM_ATTR_MTU, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{PM_ATTR_BANDWIDTH, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{61, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{62, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
    channel_attribute_owner{67, PM_SAP_ETHERNET_CHANNEL, PM_SAP_ETHERNET_CHANNEL},
});

// 0 when it cannot be read.
uint32_t chassis_type() {
    uint32_t type = 0;
    pdb_get_chassis_type(&type);
    return type;
}

bool pm_is_chassis_type_10_or_11() { return has_channel_database(chassis_type()); }

bool is_sub_interface_of_channel(const set_subject &subject) {
    return is_port_channel_type(subject.interface_type) && if_index_is_port_channel_sub_interface(subject.first) != 0;
}

}  // namespace

bool goes_to_ethernet_channel_first(const set_subject &subject) {
    const bool may_go = subject.interface_type == IF_TYPE_ETHERNET_SFP ||
                        (is_port_channel_type(subject.interface_type) && pm_is_chassis_type_10_or_11());
    return may_go && !has_one_owner(chassis_type()) && ethernet_attributes.contains(subject.attribute);
}

uint32_t destination_of(const set_subject &subject) {
    const uint32_t owner = pm_get_mts_sap(subject.first);
    if (subject.interface_type == IF_TYPE_MGMT) return PM_SAP_MGMT;
    if (!is_port_channel_type(subject.interface_type)) return owner;
    for (const channel_attribute_owner &row : channel_attribute_owners) {
        if (row.attribute != subject.attribute) continue;
        return is_sub_interface_of_channel(subject) ? row.of_sub_interface : row.of_channel;
    }
    return owner;
}

// The port mode is refused although the service that it goes to takes every other attribute.
bool is_refused_on_sub_interface(const set_subject &subject, uint32_t destination) {
    const bool is_taken = destination == PM_SAP_ETHERNET_CHANNEL && subject.attribute != PM_ATTR_PORT_MODE;
    return is_sub_interface_of_channel(subject) && !is_taken;
}

bool ends_after_first(const set_subject &subject, bool went_first, uint32_t destination) {
    if (subject.interface_type == IF_TYPE_MGMT) return false;
    const bool may_have_two_owners =
        subject.interface_type == IF_TYPE_ETHERNET_SFP || is_port_channel_type(subject.interface_type);
    if (may_have_two_owners && pm_is_chassis_type_10_or_11()) return true;
    if (went_first && destination == PM_SAP_ETHERNET_CHANNEL) return true;
    return first_only_attributes.contains(subject.attribute);
}

}  // namespace pm
