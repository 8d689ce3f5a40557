// SPDX-License-Identifier: Apache-2.0
// config_attributes.h: the attributes of ports that clients can configure.
#ifndef VIRTUAL_SWITCH_CHASSIS_CONFIG_ATTRIBUTES_H
#define VIRTUAL_SWITCH_CHASSIS_CONFIG_ATTRIBUTES_H

#include <algorithm>

#include "chassis/port_settings.h"
#include "port_mgr/config_attribute.h"

namespace virtual_switch {

// The setting of a chassis file that an attribute is: its key, its member of the record, and the values it takes.
constexpr const port_setting *setting_of(std::string_view key) {
    return std::find_if(port_settings.begin(), port_settings.end(), [&](const auto &at) { return at.key == key; });
}

// A member that a chassis file may fix and that follows again from an attribute once that is configured.
using follower = void (*)(pm_port_info_t &configured);

struct config_attribute {
    uint8_t number;  // one of PM_ATTR_...
    const port_setting *setting;
    kind_set kinds;  // that have it, as far as they have the member at all
    follower release = [](pm_port_info_t &) {};
};

inline constexpr kind_set all_interfaces = ~kind_set{};
inline constexpr kind_set all_ports = ~kind_set{port_kind::loopback, port_kind::sub_interface};
inline constexpr kind_set with_fibre_channel{port_kind::fc, port_kind::fcip, port_kind::fc_channel};
inline constexpr kind_set with_trunking{port_kind::fc,       port_kind::fcip,         port_kind::fc_channel,
                                        port_kind::ethernet, port_kind::ethernet_sfp, port_kind::ethernet_channel};
inline constexpr kind_set with_mode =
    ~kind_set{port_kind::slot_port, port_kind::mgmt, port_kind::loopback, port_kind::sub_interface};
inline constexpr kind_set with_speed = ~kind_set{port_kind::slot_port, port_kind::loopback, port_kind::sub_interface};
inline constexpr kind_set with_beacon =
    ~kind_set{port_kind::slot_port, port_kind::fcip, port_kind::mgmt, port_kind::loopback, port_kind::sub_interface};
inline constexpr kind_set with_credits{port_kind::fc, port_kind::fc_channel};

inline constexpr std::array config_attributes{
    config_attribute{PM_ATTR_ADMIN_STATE, setting_of("admin_state"), all_interfaces},
    config_attribute{PM_ATTR_DESCRIPTION, setting_of("description"), all_interfaces},
    config_attribute{PM_ATTR_PORT_MODE, setting_of("admin_mode"), with_mode,
                     [](pm_port_info_t &configured) { configured.oper_mode = 0; }},
    config_attribute{PM_ATTR_TRUNK_MODE, setting_of("admin_trunk_mode"), with_trunking,
                     [](pm_port_info_t &configured) { configured.oper_trunk_mode = 0; }},
    config_attribute{PM_ATTR_SPEED, setting_of("admin_speed"), with_speed,
                     [](pm_port_info_t &configured) { configured.oper_speed = 0; }},
    config_attribute{PM_ATTR_RATE_MODE, setting_of("rate_mode"), all_interfaces},
    config_attribute{PM_ATTR_DUPLEX, setting_of("duplex"), all_interfaces},
    config_attribute{PM_ATTR_AUTO_NEG, setting_of("auto_neg"), all_interfaces},
    config_attribute{PM_ATTR_BEACON_MODE, setting_of("beacon_mode"), with_beacon},
    config_attribute{PM_ATTR_RX_BUF_SIZE, setting_of("rx_buf_size"), with_fibre_channel},
    config_attribute{PM_ATTR_RX_BB_CREDIT, setting_of("rx_bb_credit"), with_credits},
    config_attribute{PM_ATTR_PORT_VSAN, setting_of("port_vsan"), with_fibre_channel},
    config_attribute{PM_ATTR_MTU, setting_of("mtu"), all_interfaces},
    config_attribute{PM_ATTR_BANDWIDTH, setting_of("bandwidth"), all_interfaces},
    config_attribute{PM_ATTR_DOWN_ON_LINK_FAILURE, setting_of("down_on_link_failure"), all_ports},
};

// Null for an attribute that is not implemented.
const config_attribute *find_attribute(uint8_t number);

bool has_attribute(port_kind kind, const config_attribute &attribute);

// Makes a port configured so. The value is good, and the port has the attribute.
void configure(port &to, const config_attribute &attribute, const setting_value &value);

}  // namespace virtual_switch

#endif
