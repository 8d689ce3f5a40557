// SPDX-License-Identifier: Apache-2.0
#include "output/port_members.h"

#include "output/member_place.h"
#include "port_mgr/port_info_record.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/port_state_reason.h"
#include "port_mgr/port_strings.h"

#define PLACE(member) PLACE_IN(pm_port_info_t, member)
#define BRIEF(member) PLACE_IN(pm_port_info_brief_t, member)
#define ELEMENT(member, index) element_of(PLACE(member), index)

namespace pmctl {
namespace {

using enum member_format;

constexpr uint32_t unknown_speed = 0xffffffff;

// A zero that has no word is what a port reports of an attribute that it does not have.
template <typename Value>
std::string text_of(const char *(*text)(Value), uint32_t number) {
    const char *const found = text(static_cast<Value>(number));
    return number == 0 && found == local_temp_string_buffer ? std::string() : found;
}

template <typename Value>
std::string text_of(char *(*text)(Value, char *), uint32_t number) {
    char room[80];  // the most that any of them writes
    return text(static_cast<Value>(number), room);
}

// The words of one of the library's functions, whatever its style.
template <auto Text>
std::string words(uint32_t number) {
    return text_of(Text, number);
}

std::string reason_text(uint32_t reason, int32_t form) {
    return port_state_reason_string(static_cast<uint8_t>(reason), form);
}

std::string reason_keyword(uint32_t reason) { return reason_text(reason, 1); }
std::string reason_message(uint32_t reason) { return reason_text(reason, 0); }

// Nothing to tell is no words.
std::string told_keyword(uint32_t reason) {
    std::string keyword = reason_keyword(reason);
    return keyword == "none" ? std::string() : keyword;
}

std::string yes_or_no(uint32_t number) { return number == 0 ? "no" : "yes"; }

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

// The interface index comes first: it heads the list.
constexpr record_member general[] = {
    {"Interface", "if_index", PLACE(if_index), interface},
    {"Description", "description", PLACE(description), text},
    {"Owner", "owner", PLACE(owner), owner},
    {"Port type", "port_type", PLACE(port_type), number, words<port_type_string>},
    {"Physical layer", "phy_layer", PLACE(phy_layer), number, words<port_phy_layer_string>},
    {"Port channel", "parent_if_index", PLACE(parent_if_index), interface, {}, 0},
    {"Transceiver present", "fcot_present", PLACE(fcot_present), number, yes_or_no},
};

constexpr record_member state[] = {
    {"Admin state", "admin_state", PLACE(admin_state), number, words<port_state_string>, {}, state_tone},
    {"State", "oper_state", PLACE(oper_state), number, words<port_state_string>, {}, state_tone},
    {"State reason", "state_reason", PLACE(state_reason), number, reason_message, {}, {}, reason_keyword},
    {"Service state", "service_state", PLACE(service_state), number, words<port_service_state_string>},
    {"Lane state", "lane_state", PLACE(lane_state), number, words<port_state_string>},
};

constexpr record_member mode[] = {
    {"Admin mode", "admin_mode", PLACE(admin_mode), number, words<port_mode_string>},
    {"Oper mode", "oper_mode", PLACE(oper_mode), number, words<port_mode_string>},
    {"Admin trunk mode", "admin_trunk_mode", PLACE(admin_trunk_mode), number, words<port_trunking_mode_string>},
    {"Oper trunk mode", "oper_trunk_mode", PLACE(oper_trunk_mode), number, words<port_trunking_mode_string>},
    {"Port VSAN", "port_vsan", PLACE(port_vsan), number, {}, 0},
    {"Native VLAN", "native_vlan", PLACE(native_vlan), number, {}, 0},
    {"Encapsulation", "encap", PLACE(encap), number, words<port_encap_string>},
    {"Promiscuous", "promiscuous", PLACE(promiscuous), number, words<port_promiscuous_string>},
};

constexpr record_member link[] = {
    {"Admin speed", "admin_speed", PLACE(admin_speed), number, words<port_speed_string>},
    {"Oper speed", "oper_speed", PLACE(oper_speed), number, words<port_speed_string>, unknown_speed},
    {"Rate mode", "rate_mode", PLACE(rate_mode), number, words<port_rate_mode_string>},
    {"Duplex", "duplex", PLACE(duplex), number, words<port_duplex_mode_string>},
    {"Auto-negotiation", "auto_neg", PLACE(auto_neg), number, words<port_auto_neg_string>},
    {"Bandwidth (kbit/s)", "bandwidth", PLACE(bandwidth), number},
    {"MTU (bytes)", "mtu", PLACE(mtu), number},
    {"Receive flow control", "flowctrl_receive", PLACE(flowctrl_receive), number, words<port_flowctrl_mode_string>},
    {"Send flow control", "flowctrl_send", PLACE(flowctrl_send), number, words<port_flowctrl_mode_string>},
    {"Beacon mode", "beacon_mode", PLACE(beacon_mode), number, words<port_beacon_mode_string>},
};

constexpr record_member addresses[] = {
    {"FC address", "fcid", PLACE(fcid), fc_address, {}, 0},
    {"IP address", "ip_address", PLACE(ip_address), ipv4, {}, 0},
    {"IP mask", "ip_mask", PLACE(ip_mask), ipv4, {}, 0},
};

constexpr record_member buffers[] = {
    {"BB credits", "bb_credit", PLACE(bb_credit), number, words<port_bb_credit_string>},
    {"Extended BB credits", "ec_bb_credit", PLACE(ec_bb_credit), number, words<port_ec_bb_credit_string>},
    {"BB credit multiplier", "bb_credit_multiplier", PLACE(bb_credit_multiplier), number,
     words<port_bb_credit_multiplier_string>},
    {"Performance buffers", "bb_credit_performance_buf", PLACE(bb_credit_performance_buf), number,
     words<port_bb_credit_performance_buf_string>},
    {"BB state change notification", "bb_scn", PLACE(bb_scn), number, words<port_bb_scn_cfg_string>},
    {"Receive buffer size (bytes)", "rx_buf_size", PLACE(rx_buf_size), number, words<port_rxbufsize_string>},
};

constexpr record_member events[] = {
    {"Link-up trap", "snmp_trap_link_up", ELEMENT(snmp_trap, 0), number, words<port_snmp_trap_string>},
    {"Link-down trap", "snmp_trap_link_down", ELEMENT(snmp_trap, 1), number, words<port_snmp_trap_string>},
    {"Delayed trap state", "delayed_trap_state", PLACE(delayed_trap_state), number,
     words<pm_delayed_trap_state_string>},
    {"Down on link failure", "down_on_link_failure", PLACE(down_on_link_failure), number,
     words<port_down_on_link_failure_string>},
    {"Ignored errors", "ignore_param", PLACE(ignore_param), number, words<port_ignore_param_string>},
    {"Tracking mode", "track_mode", PLACE(track_mode), number, words<port_track_mode_string>},
    {"Link failures", "link_failures", ELEMENT(link_error_count, 0), number},
    {"Sync losses", "sync_losses", ELEMENT(link_error_count, 1), number},
    {"Signal losses", "signal_losses", ELEMENT(link_error_count, 2), number},
    {"Invalid words", "invalid_words", ELEMENT(link_error_count, 3), number},
    {"Bad CRCs", "bad_crcs", ELEMENT(link_error_count, 4), number},
};

constexpr record_member fcip[] = {
    {"Peer address", "fcip_peer_address", ELEMENT(fcip_params, 0), ipv4, {}, 0},
    {"Peer TCP port", "fcip_tcp_port", PLACE(fcip_tcp_port), number, {}, 0},
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

// One line of a table, from full and from brief records.
#define COLUMNS_OF(record)                                                                                           \
    {                                                                                                                \
        {"Interface", "if_index", PLACE_IN(record, if_index), interface},                                            \
            {"Admin mode", "admin_mode", PLACE_IN(record, admin_mode), number, words<port_mode_string>},             \
            {"Oper mode", "oper_mode", PLACE_IN(record, oper_mode), number, words<port_mode_string>},                \
            {"State", "oper_state", PLACE_IN(record, oper_state), number, words<port_state_string>, {}, state_tone}, \
            {"Reason",       "state_reason", PLACE_IN(record, state_reason), number, reason_message, {}, {},         \
             reason_keyword, told_keyword},                                                                          \
            {"Gbps", "oper_speed", PLACE_IN(record, oper_speed), number, words<port_speed_string>, unknown_speed,    \
             {},     {},           words<port_speed_string_gbps>},                                                   \
            {"Port channel", "parent_if_index", PLACE_IN(record, parent_if_index), interface, {}, 0},                \
            {"VSAN", "port_vsan", PLACE_IN(record, port_vsan), number, {}, 0},                                       \
    }
constexpr record_member columns[] = COLUMNS_OF(pm_port_info_brief_t);
constexpr record_member full_columns[] = COLUMNS_OF(pm_port_info_t);
#undef COLUMNS_OF

// What the table has no room for.
constexpr record_member beside_columns[] = {
    {"Admin trunk mode", "admin_trunk_mode", BRIEF(admin_trunk_mode), number, words<port_trunking_mode_string>},
    {"Oper trunk mode", "oper_trunk_mode", BRIEF(oper_trunk_mode), number, words<port_trunking_mode_string>},
    {"Service state", "service_state", BRIEF(service_state), number, words<port_service_state_string>},
    {"MTU (bytes)", "mtu", BRIEF(mtu), number},
    {"Bandwidth (kbit/s)", "bandwidth", BRIEF(bandwidth), number},
    {"FC address", "fcid", BRIEF(fcid), fc_address, {}, 0},
    {"IP address", "ip_address", BRIEF(ip_address), ipv4, {}, 0},
};

constexpr member_group all_brief[] = {
    {"Columns", columns},
    {"Beside the columns", beside_columns},
};

}  // namespace

std::span<const member_group> port_groups() { return full_groups; }
std::span<const record_member> brief_columns() { return columns; }
std::span<const record_member> port_columns() { return full_columns; }
std::span<const member_group> brief_groups() { return all_brief; }

}  // namespace pmctl
