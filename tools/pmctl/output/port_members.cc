// SPDX-License-Identifier: Apache-2.0
#include "output/port_members.h"

#include <type_traits>

#include "port_mgr/port_info_record.h"
#include "port_mgr/port_info_response.h"

// A member's place, and that of one element of an array. Pointers to members would lose the records' packing.
#define PLACE_IN(record, member) \
    place_of<std::remove_all_extents_t<decltype(record::member)>>(offsetof(record, member), sizeof(record::member))
#define PLACE(member) PLACE_IN(pm_port_info_t, member)
#define BRIEF(member) PLACE_IN(pm_port_info_brief_t, member)
#define ELEMENT(member, index) element_of(PLACE(member), index)

namespace pmctl {
namespace {

using enum member_format;

constexpr uint32_t unknown_speed = 0xffffffff;

// Of administrative and of operational states: up and trunking; down and failed.
constexpr tone state_tone(uint32_t state) {
    switch (state) {
        case 1:
        case 8:
            return tone::good;
        case 2:
        case 16:
            return tone::bad;
        default:
            return tone::plain;
    }
}

template <typename Element>
constexpr member_place place_of(size_t offset, size_t size) {
    return {static_cast<uint16_t>(offset), sizeof(Element), static_cast<uint16_t>(size / sizeof(Element))};
}

constexpr member_place element_of(member_place array, uint16_t index) {
    return {static_cast<uint16_t>(array.offset + index * array.size), array.size, 1};
}

// The interface index comes first: it heads the list.
constexpr record_member general[] = {
    {"Interface", "if_index", PLACE(if_index), interface},
    {"Description", "description", PLACE(description), text},
    {"Owner", "owner", PLACE(owner), text},
    {"Port type", "port_type", PLACE(port_type), number},
    {"Physical layer", "phy_layer", PLACE(phy_layer), number},
    {"Port channel", "parent_if_index", PLACE(parent_if_index), interface, 0},
    {"Transceiver present", "fcot_present", PLACE(fcot_present), number},
};

constexpr record_member state[] = {
    {"Admin state", "admin_state", PLACE(admin_state), number, {}, state_tone},
    {"State", "oper_state", PLACE(oper_state), number, {}, state_tone},
    {"State reason", "state_reason", PLACE(state_reason), number},
    {"Service state", "service_state", PLACE(service_state), number},
    {"Lane state", "lane_state", PLACE(lane_state), number},
};

constexpr record_member mode[] = {
    {"Admin mode", "admin_mode", PLACE(admin_mode), number},
    {"Oper mode", "oper_mode", PLACE(oper_mode), number},
    {"Admin trunk mode", "admin_trunk_mode", PLACE(admin_trunk_mode), number},
    {"Oper trunk mode", "oper_trunk_mode", PLACE(oper_trunk_mode), number},
    {"Port VSAN", "port_vsan", PLACE(port_vsan), number, 0},
    {"Native VLAN", "native_vlan", PLACE(native_vlan), number, 0},
    {"Encapsulation", "encap", PLACE(encap), number},
    {"Promiscuous", "promiscuous", PLACE(promiscuous), number},
};

constexpr record_member link[] = {
    {"Admin speed (Mbit/s)", "admin_speed", PLACE(admin_speed), number},
    {"Oper speed (Mbit/s)", "oper_speed", PLACE(oper_speed), number, unknown_speed},
    {"Rate mode", "rate_mode", PLACE(rate_mode), number},
    {"Duplex", "duplex", PLACE(duplex), number},
    {"Auto-negotiation", "auto_neg", PLACE(auto_neg), number},
    {"Bandwidth (kbit/s)", "bandwidth", PLACE(bandwidth), number},
    {"MTU (bytes)", "mtu", PLACE(mtu), number},
    {"Receive flow control", "flowctrl_receive", PLACE(flowctrl_receive), number},
    {"Send flow control", "flowctrl_send", PLACE(flowctrl_send), number},
    {"Beacon mode", "beacon_mode", PLACE(beacon_mode), number},
};

constexpr record_member addresses[] = {
    {"FC address", "fcid", PLACE(fcid), fc_address, 0},
    {"IP address", "ip_address", PLACE(ip_address), ipv4, 0},
    {"IP mask", "ip_mask", PLACE(ip_mask), ipv4, 0},
};

constexpr record_member buffers[] = {
    {"BB credits", "bb_credit", PLACE(bb_credit), number},
    {"Extended BB credits", "ec_bb_credit", PLACE(ec_bb_credit), number},
    {"BB credit multiplier", "bb_credit_multiplier", PLACE(bb_credit_multiplier), number},
    {"Performance buffers", "bb_credit_performance_buf", PLACE(bb_credit_performance_buf), number},
    {"BB state change notification", "bb_scn", PLACE(bb_scn), number},
    {"Receive buffer size (bytes)", "rx_buf_size", PLACE(rx_buf_size), number},
};

constexpr record_member events[] = {
    {"Link-up trap", "snmp_trap_link_up", ELEMENT(snmp_trap, 0), number},
    {"Link-down trap", "snmp_trap_link_down", ELEMENT(snmp_trap, 1), number},
    {"Delayed trap state", "delayed_trap_state", PLACE(delayed_trap_state), number},
    {"Down on link failure", "down_on_link_failure", PLACE(down_on_link_failure), number},
    {"Ignored errors", "ignore_param", PLACE(ignore_param), number},
    {"Tracking mode", "track_mode", PLACE(track_mode), number},
    {"Link failures", "link_failures", ELEMENT(link_error_count, 0), number},
    {"Sync losses", "sync_losses", ELEMENT(link_error_count, 1), number},
    {"Signal losses", "signal_losses", ELEMENT(link_error_count, 2), number},
    {"Invalid words", "invalid_words", ELEMENT(link_error_count, 3), number},
    {"Bad CRCs", "bad_crcs", ELEMENT(link_error_count, 4), number},
};

constexpr record_member fcip[] = {
    {"Peer address", "fcip_peer_address", ELEMENT(fcip_params, 0), ipv4, 0},
    {"Peer TCP port", "fcip_tcp_port", PLACE(fcip_tcp_port), number, 0},
    {"Attribute 86", "fcip_tlv_86", ELEMENT(fcip_params, 1), number},
    {"Attribute 87", "fcip_tlv_87", ELEMENT(fcip_params, 2), number},
    {"Attribute 88", "fcip_tlv_88", ELEMENT(fcip_params, 5), number},
    {"Attribute 89", "fcip_tlv_89", ELEMENT(fcip_params, 4), number},
    {"Attribute 90", "fcip_tlv_90", ELEMENT(fcip_params, 3), number},
    {"Attribute 91", "fcip_tlv_91", ELEMENT(fcip_params, 6), number},
};

constexpr record_member others[] = {
    {"Attribute 67", "tlv_67", PLACE(tlv_67), number},
    {"Attribute 68", "tlv_68", PLACE(tlv_68), number},
    {"Attribute 78", "tlv_78", PLACE(tlv_78), number},
    {"Attribute 81", "tlv_81", PLACE(tlv_81), network_number},
    {"Attribute 82", "tlv_82", PLACE(tlv_82), network_number},
    {"Attribute 93", "tlv_93", PLACE(tlv_93), number},
    {"Attribute 94", "tlv_94", PLACE(tlv_94), number},
    {"Attribute 95", "tlv_95", PLACE(tlv_95), number},
    {"Attribute 106", "tlv_106", PLACE(tlv_106), number},
    {"Attribute 107", "tlv_107", PLACE(tlv_107), number},
    {"Attribute 108", "tlv_108", PLACE(tlv_108), number},
};

constexpr member_group full_groups[] = {
    {"General", general},
    {"State", state},
    {"Mode", mode},
    {"Link", link},
    {"Addresses", addresses},
    {"Buffers and credits", buffers},
    {"Traps, tracking and errors", events},
    {"FCIP", fcip},
    {"Other attributes", others},
};

constexpr record_member columns[] = {
    {"Interface", "if_index", BRIEF(if_index), interface},
    {"Admin mode", "admin_mode", BRIEF(admin_mode), number},
    {"Oper mode", "oper_mode", BRIEF(oper_mode), number},
    {"State", "oper_state", BRIEF(oper_state), number, {}, state_tone},
    {"Reason", "state_reason", BRIEF(state_reason), number},
    {"Mbit/s", "oper_speed", BRIEF(oper_speed), number, unknown_speed},
    {"Port channel", "parent_if_index", BRIEF(parent_if_index), interface, 0},
    {"VSAN", "port_vsan", BRIEF(port_vsan), number, 0},
};

// What the table has no room for.
constexpr record_member beside_columns[] = {
    {"Admin trunk mode", "admin_trunk_mode", BRIEF(admin_trunk_mode), number},
    {"Oper trunk mode", "oper_trunk_mode", BRIEF(oper_trunk_mode), number},
    {"Service state", "service_state", BRIEF(service_state), number},
    {"MTU (bytes)", "mtu", BRIEF(mtu), number},
    {"Bandwidth (kbit/s)", "bandwidth", BRIEF(bandwidth), number},
    {"FC address", "fcid", BRIEF(fcid), fc_address, 0},
    {"IP address", "ip_address", BRIEF(ip_address), ipv4, 0},
};

constexpr member_group all_brief[] = {
    {"Columns", columns},
    {"Beside the columns", beside_columns},
};

}  // namespace

std::span<const member_group> port_groups() { return full_groups; }
std::span<const record_member> brief_columns() { return columns; }
std::span<const member_group> brief_groups() { return all_brief; }

}  // namespace pmctl
