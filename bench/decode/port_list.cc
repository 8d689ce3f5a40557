// SPDX-License-Identifier: Apache-2.0
#include "bench/decode/port_list.h"

#include <arpa/inet.h>

#include <cstdio>
#include <iterator>

#include "platform/if_index.h"
#include "platform_dev/if_index_dev.h"

namespace bench {

namespace {

constexpr uint32_t ports_in_slot = 48;

void set_base_members(pm_port_info_t &port, uint32_t number) {
    std::snprintf(port.description, sizeof port.description, "uplink %u to core-3", number);
    port.admin_mode = 0xfffb;
    port.admin_speed = 16000;
    port.admin_state = 1;
    port.oper_mode = 0x8;
    for (uint8_t &lane : port.lane_state) lane = 1;
    port.port_vsan = static_cast<uint16_t>(100 + number % 16);
    for (size_t i = 0; i < 4; ++i) port.bb_credit[i] = 500;
    port.rx_buf_size = 2112;
    port.oper_state = 8;
    port.fcid = htonl(0x0a0000 + number);
    port.ip_address = htonl(0x0a010000 + number);
    port.ip_mask = htonl(0xffff0000);
    port.oper_speed = 16000;
    port.mtu = 2112;
    port.bandwidth = 16000000;
    port.state_reason = 2;
    port.admin_trunk_mode = 2;
    port.oper_trunk_mode = 2;
    port.beacon_mode = 2;
    port.service_state = 1;
    port.port_type = 1;
    for (uint8_t &trap : port.snmp_trap) trap = 1;
    port.down_on_link_failure = 4;
    for (size_t i = 0; i < std::size(port.link_error_count); ++i) port.link_error_count[i] = 70 + number;
}

void set_attributes(pm_port_info_t &port) {
    port.rate_mode = 1;
    port.bb_credit[4] = 15;
    port.auto_neg = 1;
    port.duplex = 2;
    port.phy_layer = 1;
    port.encap = 2;
    port.bb_scn = 1;
    port.bb_credit_multiplier = 4;
    port.ec_bb_credit = 1000;
    port.fcot_present = 1;
    port.bb_credit_performance_buf = 145;
    port.promiscuous = 2;
}

}  // namespace

port_list make_ports(uint32_t count) {
    port_list ports(count);
    for (uint32_t i = 0; i < count; ++i) {
        const auto slot = static_cast<uint8_t>(1 + i / ports_in_slot);
        if_index_t if_index = 0;
        if_index_slot_port_init(&if_index, IF_TYPE_FC, slot, static_cast<uint8_t>(1 + i % ports_in_slot));
        ports[i].if_index = if_index;
        if_index_port_channel_init(&if_index, static_cast<uint16_t>(1 + i / 4));
        ports[i].parent_if_index = if_index;
        set_base_members(ports[i], i);
        set_attributes(ports[i]);
    }
    return ports;
}

}  // namespace bench
