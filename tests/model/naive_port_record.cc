// SPDX-License-Identifier: Apache-2.0
#include "naive_port_record.h"

#include <cstdio>
#include <set>

#include "naive_bytes.h"

namespace model {
namespace {

pm_port_info_t base_record(const uint8_t *base) {
    pm_port_info_t port{};
    port.if_index = if_index(base);
    port.admin_mode = number32(base + 4);
    for (int i = 0; i < 81; ++i) port.description[i] = static_cast<char>(base[8 + i]);
    port.admin_speed = number32(base + 89);
    port.admin_state = base[93];
    port.oper_mode = number32(base + 94);
    for (int i = 0; i < 4; ++i) port.lane_state[i] = base[98 + i];
    port.port_vsan = number16(base + 102);
    for (int i = 0; i < 4; ++i) port.bb_credit[i] = number32(base + 104 + 4 * i);
    port.rx_buf_size = number16(base + 120);
    port.oper_state = base[122];
    port.fcid = as_it_came(base + 123);
    port.ip_address = as_it_came(base + 127);
    port.ip_mask = as_it_came(base + 131);
    port.oper_speed = number32(base + 135);
    port.mtu = number32(base + 139);
    port.bandwidth = number32(base + 143);
    port.state_reason = base[147];
    port.admin_trunk_mode = base[148];
    port.oper_trunk_mode = base[149];
    port.beacon_mode = base[150];
    port.service_state = number32(base + 151);
    port.port_type = number32(base + 155);
    port.snmp_trap[0] = base[159];
    port.snmp_trap[1] = base[160];
    port.down_on_link_failure = number32(base + 161);
    port.parent_if_index = if_index(base + 165);
    for (int i = 0; i < 5; ++i) port.link_error_count[i] = number32(base + 169 + 4 * i);
    return port;
}

void store(uint16_t type, const uint8_t *value, pm_port_info_t &port) {
    if (type == 4) port.rate_mode = value[7];
    if (type == 22) port.bb_credit[4] = number32(value + 4);
    if (type == 23) port.auto_neg = number32(value + 4);
    if (type == 24) port.duplex = value[7];
    if (type == 30) port.phy_layer = value[7];
    if (type == 31) port.encap = value[7];
    if (type == 32) port.bb_scn = value[7];
    if (type == 36) port.ignore_param = value[4];
    if (type == 37) port.bb_credit_multiplier = number32(value + 4);
    if (type == 38) port.track_mode = number32(value + 4);
    if (type == 39) port.delayed_trap_state = value[4];
    if (type == 42) port.ec_bb_credit = number32(value + 4);
    if (type == 43) port.fcot_present = value[4];
    if (type == 67) port.tlv_67 = value[4];
    if (type == 68) port.tlv_68 = value[4];
    if (type == 74) port.bb_credit_performance_buf = number32(value + 4);
    if (type == 78) port.tlv_78 = value[4];
    if (type == 81) port.tlv_81 = as_it_came(value + 4);
    if (type == 82) port.tlv_82 = as_it_came(value + 4);
    if (type == 83) port.native_vlan = number16(value + 6);
    if (type == 84) port.flowctrl_receive = number16(value + 6);
    if (type == 85) port.flowctrl_send = number16(value + 6);
    if (type == 86) port.fcip_params[1] = number32(value + 4);
    if (type == 87) port.fcip_params[2] = number32(value + 4);
    if (type == 88) port.fcip_params[5] = number32(value + 4);
    if (type == 89) port.fcip_params[4] = number32(value + 4);
    if (type == 90) port.fcip_params[3] = number32(value + 4);
    if (type == 93) port.tlv_93 = number32(value + 4);
    if (type == 94) port.tlv_94 = number16(value + 6);
    if (type == 95) port.tlv_95 = number32(value + 4);
    if (type == 97) port.fcip_params[0] = as_it_came(value + 4);
    if (type == 98) port.promiscuous = number32(value + 4);
    if (type == 106) port.tlv_106 = number32(value + 4);
    if (type == 107) port.tlv_107 = number32(value + 4);
    if (type == 108) port.tlv_108 = number32(value + 4);
}

bool is_known(uint16_t type) {
    static const std::set<uint16_t> known{4,  22, 23, 24, 30, 31, 32, 36, 37, 38, 39, 42, 43, 67, 68,  74,  78, 81,
                                          82, 83, 84, 85, 86, 87, 88, 89, 90, 93, 94, 95, 97, 98, 106, 107, 108};
    return known.contains(type);
}

bool starts_alike(const uint8_t *base, const uint8_t *value) {
    return base[0] == value[0] && base[1] == value[1] && base[2] == value[2] && base[3] == value[3];
}

std::string line(const char *format, uint32_t first, uint32_t second = 0) {
    char text[300];
    std::snprintf(text, sizeof text, format, first, second);
    return text;
}

}  // namespace

pm_port_info_t port_record(const uint8_t *base, const std::vector<element> &elements, std::string &printed) {
    pm_port_info_t port = base_record(base);
    const element *current = nullptr;
    uint32_t held = 0;
    for (const element &each : elements) {
        if (each.error == 0) current = &each;
        if (each.error != 0) {
            printed += line("pm_parse_port_info: Error 0x%x in tlv_array_get_next_tlv()\n", each.error);
        }
        if (current == nullptr) continue;
        const uint8_t *const value = current->value.data();
        if (current->type == 110) {
            if (current->length != 81) continue;
            for (int i = 0; i < 80; ++i) port.owner[i] = static_cast<char>(value[i]);
            port.owner[80] = 0;
            continue;
        }
        if (!starts_alike(base, value)) continue;
        if (current->type == 91) {
            held = number32(value + 4);
        } else if (current->type == 92) {
            port.fcip_params[6] = held;
            port.fcip_tcp_port = number16(value + 6);
        } else if (is_known(current->type)) {
            store(current->type, value, port);
        } else if (current->type != 105) {
            printed += line("pm_parse_port_info: Unknown TLV with type %u for port %x\n", current->type, port.if_index);
        }
    }
    return port;
}

}  // namespace model
