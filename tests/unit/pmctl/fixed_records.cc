// SPDX-License-Identifier: Apache-2.0
#include "fixed_records.h"

#include <arpa/inet.h>

#include <cstdlib>
#include <cstring>

#include "platform_dev/if_index_dev.h"

namespace {

constexpr uint32_t unknown_speed = 0xffffffff;

void set_texts(pm_port_info_t &port) {
    strcpy(port.description, "uplink to core");
    strcpy(port.owner, "zone server");
}

void set_general_and_state(pm_port_info_t &port) {
    port.if_index = index_named("fc1/4");
    port.parent_if_index = index_named("port-channel12");
    port.port_type = 101;
    port.phy_layer = 102;
    port.fcot_present = 103;
    port.admin_state = 104;
    port.oper_state = 105;
    port.state_reason = 106;
    port.service_state = 107;
    const uint8_t lanes[] = {108, 109, 110, 111};
    memcpy(port.lane_state, lanes, sizeof lanes);
}

void set_mode_and_link(pm_port_info_t &port) {
    port.admin_mode = 201001;
    port.oper_mode = 201002;
    port.admin_trunk_mode = 112;
    port.oper_trunk_mode = 113;
    port.port_vsan = 2003;
    port.native_vlan = 2004;
    port.encap = 114;
    port.promiscuous = 201005;
    port.admin_speed = 201006;
    port.oper_speed = 201007;
    port.rate_mode = 115;
    port.duplex = 116;
    port.auto_neg = 201008;
    port.bandwidth = 4201009000;
    port.mtu = 201010;
    port.flowctrl_receive = 2011;
    port.flowctrl_send = 2012;
    port.beacon_mode = 117;
}

void set_addresses_and_buffers(pm_port_info_t &port) {
    port.fcid = htonl(0x0a0bcd);
    port.ip_address = htonl(0xc0000201);
    port.ip_mask = htonl(0xffffff00);
    const uint32_t credits[] = {301, 302, 303, 304, 305};
    memcpy(port.bb_credit, credits, sizeof credits);
    port.ec_bb_credit = 306;
    port.bb_credit_multiplier = 307;
    port.bb_credit_performance_buf = 308;
    port.bb_scn = 118;
    port.rx_buf_size = 2013;
}

void set_events(pm_port_info_t &port) {
    port.snmp_trap[0] = 119;
    port.snmp_trap[1] = 120;
    port.delayed_trap_state = 401;
    port.down_on_link_failure = 402;
    port.ignore_param = 121;
    port.track_mode = 403;
    const uint32_t errors[] = {501, 502, 503, 504, 505};
    memcpy(port.link_error_count, errors, sizeof errors);
}

void set_attributes(pm_port_info_t &port) {
    const uint32_t params[] = {htonl(0xc6336407), 601, 602, 603, 604, 605, 606};
    memcpy(port.fcip_params, params, sizeof params);
    port.fcip_tcp_port = 3225;
    port.tlv_67 = 122;
    port.tlv_68 = 123;
    port.tlv_78 = 124;
    port.tlv_81 = htonl(701);
    port.tlv_82 = htonl(702);
    port.tlv_93 = 703;
    port.tlv_94 = 704;
    port.tlv_95 = 705;
    port.tlv_106 = 706;
    port.tlv_107 = 707;
    port.tlv_108 = 708;
}

void set_worded_mode_and_link(pm_port_info_t &port) {
    port.admin_mode = 4;
    port.oper_mode = 8;
    port.admin_trunk_mode = 3;
    port.oper_trunk_mode = 2;
    port.encap = 2;
    port.promiscuous = 1;
    port.admin_speed = 2;
    port.oper_speed = 100;
    port.rate_mode = 2;
    port.duplex = 1;
    port.auto_neg = 2;
    port.flowctrl_receive = 1;
    port.flowctrl_send = 8;
    port.beacon_mode = 1;
}

void set_worded_buffers_and_events(pm_port_info_t &port) {
    const uint32_t credits[] = {0, 0x40000005, 0x80000010, 7, 8};
    memcpy(port.bb_credit, credits, sizeof credits);
    port.ec_bb_credit = 0;
    port.bb_credit_multiplier = 0xffffffff;
    port.bb_credit_performance_buf = 145;
    port.bb_scn = 2;
    port.snmp_trap[0] = 1;
    port.snmp_trap[1] = 2;
    port.delayed_trap_state = 2;
    port.down_on_link_failure = 3;
    port.ignore_param = 1;
    port.track_mode = 1;
}

}  // namespace

if_index_t index_named(const char *name) {
    if_index_t index;
    if (if_index_from_name(name, &index) != 0) abort();
    return index;
}

pm_port_info_t full_port() {
    pm_port_info_t port{};
    set_texts(port);
    set_general_and_state(port);
    set_mode_and_link(port);
    set_addresses_and_buffers(port);
    set_events(port);
    set_attributes(port);
    return port;
}

pm_port_info_t worded_port() {
    pm_port_info_t port = full_port();
    port.port_type = 2;
    port.phy_layer = 3;
    port.fcot_present = 1;
    port.admin_state = 1;
    port.oper_state = 8;
    port.state_reason = 83;
    port.service_state = 1;
    const uint8_t lanes[] = {1, 2, 4, 255};
    memcpy(port.lane_state, lanes, sizeof lanes);
    set_worded_mode_and_link(port);
    set_worded_buffers_and_events(port);
    return port;
}

pm_port_info_t bare_port() {
    pm_port_info_t port{};
    port.if_index = index_named("mgmt0");
    port.oper_speed = unknown_speed;
    return port;
}

pm_port_info_brief_t full_brief_port() {
    pm_port_info_brief_t port{};
    port.if_index = index_named("fc1/4");
    port.admin_mode = 201001;
    port.oper_mode = 201002;
    port.port_vsan = 2003;
    port.oper_state = 105;
    port.fcid = htonl(0x0a0bcd);
    port.ip_address = htonl(0xc0000201);
    port.oper_speed = 201007;
    port.mtu = 201010;
    port.bandwidth = 4201009000;
    port.state_reason = 106;
    port.admin_trunk_mode = 112;
    port.oper_trunk_mode = 113;
    port.service_state = 107;
    port.parent_if_index = index_named("port-channel12");
    return port;
}

pm_port_info_brief_t worded_brief_port() {
    pm_port_info_brief_t port = full_brief_port();
    port.admin_mode = 4;
    port.oper_mode = 8;
    port.oper_state = 16;
    port.state_reason = 83;
    port.oper_speed = 100;
    port.admin_trunk_mode = 3;
    port.oper_trunk_mode = 2;
    port.service_state = 1;
    return port;
}

pm_port_info_brief_t bare_brief_port() {
    pm_port_info_brief_t port{};
    port.if_index = index_named("mgmt0");
    port.oper_speed = unknown_speed;
    return port;
}
