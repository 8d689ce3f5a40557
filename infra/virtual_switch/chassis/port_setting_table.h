// SPDX-License-Identifier: Apache-2.0
// port_setting_table.h: the keys by which files set what a port reports, and which values each takes.
#ifndef VIRTUAL_SWITCH_CHASSIS_PORT_SETTING_TABLE_H
#define VIRTUAL_SWITCH_CHASSIS_PORT_SETTING_TABLE_H

#include "chassis/port_words.h"

namespace virtual_switch {

enum class setting_kind : uint8_t {
    number,
    word,
    word_or_number,
    text,
    network_number,  // a number whose four bytes stay in network order
    ipv4_address
};

struct port_setting {
    std::string_view key;
    setting_kind kind;
    size_t member;  // offset in pm_port_info_t
    size_t size;    // bytes of the member, or of each of its elements
    number_range range{};
    std::span<const named_value> words{};
    size_t count = 1;  // more than one is set by an array
};

inline constexpr number_range any_8{0, 0xff};
inline constexpr number_range any_16{0, 0xffff};
inline constexpr number_range any_32{0, 0xffffffff};
inline constexpr number_range speeds{10, 400000};
inline constexpr number_range vsans{1, 4093};
inline constexpr number_range vlans{1, 4094};
inline constexpr number_range mtus{64, 65535};
inline constexpr number_range fc_ids{0, 0xffffff};

#define PM_SETTING(member, kind, ...)                                                                              \
    port_setting {                                                                                                 \
#member, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(pm_port_info_t::member), __VA_ARGS__ \
    }
#define PM_ELEMENTS(member, kind, range, words, count)                                                           \
    port_setting {                                                                                               \
#member, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(pm_port_info_t::member) / (count), \
            range, words, count                                                                                  \
    }
#define PM_NAMED_ELEMENT(key, kind, member, range) \
    port_setting { key, setting_kind::kind, offsetof(pm_port_info_t, member), sizeof(uint32_t), range }

inline constexpr std::array port_settings{
    PM_SETTING(description, text),
    PM_SETTING(owner, text),
    PM_SETTING(admin_state, word, {}, admin_state_words),
    PM_SETTING(admin_mode, word, {}, mode_words),
    PM_SETTING(oper_mode, word, {}, mode_words),
    PM_SETTING(admin_speed, word_or_number, speeds, speed_words),
    PM_SETTING(oper_speed, number, speeds),
    PM_SETTING(state_reason, word_or_number, any_8, reason_words),
    PM_SETTING(port_vsan, number, vsans),
    PM_SETTING(admin_trunk_mode, word, {}, trunk_words),
    PM_SETTING(oper_trunk_mode, word, {}, trunk_words),
    PM_SETTING(mtu, number, mtus),
    PM_SETTING(bandwidth, number, any_32),
    PM_SETTING(beacon_mode, word, {}, on_off_words),
    PM_ELEMENTS(bb_credit, number, any_32, std::span<const named_value>{}, 5),
    PM_NAMED_ELEMENT("rx_bb_credit", number, bb_credit[0], any_32),
    PM_SETTING(rx_buf_size, number, any_16),
    PM_SETTING(fcid, network_number, fc_ids),
    PM_SETTING(ip_address, ipv4_address),
    PM_SETTING(ip_mask, ipv4_address),
    PM_SETTING(service_state, word, {}, service_state_words),
    PM_SETTING(port_type, word, {}, port_type_words),
    PM_ELEMENTS(snmp_trap, word, number_range{}, on_off_words, 2),
    PM_SETTING(down_on_link_failure, word, {}, link_failure_words),
    PM_ELEMENTS(link_error_count, number, any_32, std::span<const named_value>{}, 5),
    PM_ELEMENTS(lane_state, number, any_8, std::span<const named_value>{}, 4),
    PM_SETTING(rate_mode, word, {}, rate_words),
    PM_SETTING(auto_neg, word, {}, on_off_words),
    PM_SETTING(duplex, word, {}, duplex_words),
    PM_SETTING(native_vlan, number, vlans),
    PM_SETTING(flowctrl_receive, word, {}, flow_control_words),
    PM_SETTING(flowctrl_send, word, {}, flow_control_words),
    PM_SETTING(promiscuous, word, {}, on_off_words),
    PM_SETTING(phy_layer, word, {}, phy_layer_words),
    PM_SETTING(encap, word, {}, encap_words),
    PM_SETTING(bb_scn, word, {}, on_off_words),
    PM_SETTING(ignore_param, word, {}, on_off_words),
    PM_SETTING(track_mode, word, {}, track_words),
    PM_SETTING(delayed_trap_state, word, {}, delayed_trap_words),
    PM_SETTING(ec_bb_credit, number, any_32),
    PM_SETTING(bb_credit_multiplier, number, any_32),
    PM_SETTING(bb_credit_performance_buf, number, any_32),
    PM_SETTING(fcot_present, word, {}, yes_no_words),
    PM_NAMED_ELEMENT("fcip_peer", ipv4_address, fcip_params[0], any_32),
    PM_SETTING(fcip_tcp_port, number, any_16),
    PM_NAMED_ELEMENT("tlv_86", number, fcip_params[1], any_32),
    PM_NAMED_ELEMENT("tlv_87", number, fcip_params[2], any_32),
    PM_NAMED_ELEMENT("tlv_88", number, fcip_params[5], any_32),
    PM_NAMED_ELEMENT("tlv_89", number, fcip_params[4], any_32),
    PM_NAMED_ELEMENT("tlv_90", number, fcip_params[3], any_32),
    PM_NAMED_ELEMENT("tlv_91", number, fcip_params[6], any_32),
    PM_SETTING(tlv_67, number, any_8),
    PM_SETTING(tlv_68, number, any_8),
    PM_SETTING(tlv_78, number, any_8),
    PM_SETTING(tlv_81, network_number, any_32),
    PM_SETTING(tlv_82, network_number, any_32),
    PM_SETTING(tlv_93, number, any_32),
    PM_SETTING(tlv_94, number, any_16),
    PM_SETTING(tlv_95, number, any_32),
    PM_SETTING(tlv_106, number, any_32),
    PM_SETTING(tlv_107, number, any_32),
    PM_SETTING(tlv_108, number, any_32),
};
#undef PM_SETTING
#undef PM_ELEMENTS
#undef PM_NAMED_ELEMENT

}  // namespace virtual_switch

#endif
