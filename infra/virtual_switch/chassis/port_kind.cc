// SPDX-License-Identifier: Apache-2.0
#include "chassis/port_kind.h"

#include <array>

namespace virtual_switch {
namespace {

constexpr uint8_t on = 1;
constexpr uint8_t off = 2;

constexpr uint8_t layer_fc = 1;
constexpr uint8_t layer_ethernet = 2;
constexpr uint8_t layer_fc_virtual = 3;
constexpr uint8_t layer_management = 6;

constexpr uint8_t encap_normal = 1;
constexpr uint8_t encap_eisl = 2;

constexpr uint8_t full_duplex = 2;
constexpr uint32_t ethernet_mtu = 1500;

void set_fibre_channel(pm_port_info_t &info) {
    info.admin_mode = port_mode::automatic;
    info.port_vsan = 1;
    info.rx_buf_size = 2112;
    info.mtu = 2112;
    info.admin_trunk_mode = trunk_mode::on;
    info.encap = encap_normal;
}

void set_fc(pm_port_info_t &info) {
    set_fibre_channel(info);
    info.phy_layer = layer_fc;
    info.bb_credit[0] = 16;
    info.bb_credit[1] = 16;
    info.rate_mode = 1;  // dedicated
    info.bb_scn = off;
    info.ignore_param = off;
    info.delayed_trap_state = 1;  // disabled
    info.bb_credit_multiplier = 0xffffffff;
    info.fcot_present = on;
}

void set_fc_channel(pm_port_info_t &info) {
    set_fibre_channel(info);
    info.phy_layer = layer_fc_virtual;
    info.delayed_trap_state = 1;
}

void set_fcip(pm_port_info_t &info) {
    set_fibre_channel(info);
    info.phy_layer = layer_fc_virtual;
    info.encap = encap_eisl;
    info.mtu = 2300;
    info.fcip_tcp_port = 3225;
}

void set_wire(pm_port_info_t &info) {
    info.mtu = ethernet_mtu;
    info.phy_layer = layer_ethernet;
    info.auto_neg = on;
    info.duplex = full_duplex;
    info.promiscuous = off;
}

void set_ethernet_channel(pm_port_info_t &info) {
    set_wire(info);
    info.admin_mode = port_mode::trunk;
    info.admin_trunk_mode = trunk_mode::on;
    info.native_vlan = 1;
    info.encap = encap_normal;
}

void set_ethernet(pm_port_info_t &info) {
    set_ethernet_channel(info);
    info.fcot_present = on;
}

void set_ips(pm_port_info_t &info) {
    set_wire(info);
    info.admin_mode = port_mode::ips;
    info.fcot_present = on;
}

void set_mgmt(pm_port_info_t &info) {
    set_wire(info);
    info.admin_mode = port_mode::automatic;
    info.phy_layer = layer_management;
}

void set_plain(pm_port_info_t &info) {
    info.admin_mode = port_mode::automatic;
    info.mtu = ethernet_mtu;
    info.phy_layer = layer_ethernet;
}

attribute_set types(std::initializer_list<uint16_t> list) {
    attribute_set set;
    for (const uint16_t type : list) set.set(type);
    set.set(pm::owner_attribute);
    return set;
}

// In the order of port_kind.
const std::array<port_kind_traits, port_kind_count> kinds{{
    port_kind_traits{"fc", types({4, 22, 30, 31, 32, 36, 37, 38, 39, 42, 43, 67, 68, 74, 78, 81, 82}), 8000,
                     port_mode::f, set_fc},
    port_kind_traits{"ethernet", types({23, 24, 30, 31, 43, 83, 84, 85, 98, 105, 106, 107, 108}), 10000,
                     port_mode::trunk, set_ethernet},
    port_kind_traits{"ips", types({23, 24, 30, 43, 84, 85, 98}), 1000, port_mode::ips, set_ips},
    port_kind_traits{"slot-port", types({30}), 1000, port_mode::automatic, set_plain},
    port_kind_traits{"ethernet-sfp", types({23, 24, 30, 31, 43, 83, 84, 85, 98}), 10000, port_mode::trunk,
                     set_ethernet},
    port_kind_traits{"fcip", types({30, 31, 38, 86, 87, 88, 89, 90, 91, 92, 93, 94, 95, 97}), 1000, port_mode::e,
                     set_fcip},
    port_kind_traits{"FC port-channel", types({30, 31, 38, 39}), 0, port_mode::e, set_fc_channel},
    port_kind_traits{"Ethernet port-channel", types({23, 24, 30, 31, 83, 84, 85, 98, 105}), 0, port_mode::trunk,
                     set_ethernet_channel},
    port_kind_traits{"mgmt", types({23, 24, 30, 98}), 1000, port_mode::automatic, set_mgmt},
    port_kind_traits{"loopback", types({30}), 1000, port_mode::automatic, set_plain},
    port_kind_traits{"other", types({30}), 1000, port_mode::automatic, set_plain},
    port_kind_traits{"sub-interface", types({30, 83}), 0, port_mode::automatic, set_plain},
}};

}  // namespace

const port_kind_traits &traits_of(port_kind kind) { return kinds.at(static_cast<size_t>(kind)); }

pm_port_info_t default_port_info(port_kind kind, if_index_t if_index) {
    pm_port_info_t info{};
    info.if_index = if_index;
    info.admin_state = port_state::up;
    info.oper_state = port_state::up;
    info.state_reason = reason::none;
    info.port_type = 1;  // external
    info.beacon_mode = off;
    info.snmp_trap[0] = on;
    info.snmp_trap[1] = on;
    info.down_on_link_failure = 4;  // disabled
    traits_of(kind).set_defaults(info);
    return info;
}

}  // namespace virtual_switch
