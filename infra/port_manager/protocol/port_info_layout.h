// SPDX-License-Identifier: Apache-2.0
// port_info_layout.h: how a port travels: the base record, the brief record, and the attribute elements.
#ifndef PROTOCOL_PORT_INFO_LAYOUT_H
#define PROTOCOL_PORT_INFO_LAYOUT_H

#include <array>
#include <cstddef>

#include "port_mgr/port_info_record.h"
#include "port_mgr/port_info_response.h"
#include "protocol/record_codec.h"

namespace pm {

// Every answer starts with a status word and, when it is good, a count of records.
inline constexpr size_t answer_status_size = 4;
inline constexpr size_t answer_header_size = 8;

inline constexpr size_t base_record_size = 189;

#define PM_FIELD(wire, member, ...) \
    record_field { wire, offsetof(pm_port_info_t, member), field_kind::__VA_ARGS__ }
inline constexpr auto base_record_fields = std::to_array({
    PM_FIELD(0, if_index, if_index),
    PM_FIELD(4, admin_mode, u32),
    PM_FIELD(8, description, bytes, 81),
    PM_FIELD(89, admin_speed, u32),
    PM_FIELD(93, admin_state, bytes),
    PM_FIELD(94, oper_mode, u32),
    PM_FIELD(98, lane_state, bytes, 4),
    PM_FIELD(102, port_vsan, u16),
    PM_FIELD(104, bb_credit, u32, 4),
    PM_FIELD(120, rx_buf_size, u16),
    PM_FIELD(122, oper_state, bytes),
    PM_FIELD(123, fcid, bytes, 4),
    PM_FIELD(127, ip_address, bytes, 4),
    PM_FIELD(131, ip_mask, bytes, 4),
    PM_FIELD(135, oper_speed, u32),
    PM_FIELD(139, mtu, u32),
    PM_FIELD(143, bandwidth, u32),
    PM_FIELD(147, state_reason, bytes),
    PM_FIELD(148, admin_trunk_mode, bytes),
    PM_FIELD(149, oper_trunk_mode, bytes),
    PM_FIELD(150, beacon_mode, bytes),
    PM_FIELD(151, service_state, u32),
    PM_FIELD(155, port_type, u32),
    PM_FIELD(159, snmp_trap, bytes, 2),
    PM_FIELD(161, down_on_link_failure, u32),
    PM_FIELD(165, parent_if_index, if_index),
    PM_FIELD(169, link_error_count, u32, 5),
});
#undef PM_FIELD

inline constexpr size_t brief_record_size = 51;

#define PM_FIELD(wire, member, ...) \
    record_field { wire, offsetof(pm_port_info_brief_t, member), field_kind::__VA_ARGS__ }
inline constexpr auto brief_record_fields = std::to_array({
    PM_FIELD(0, if_index, if_index),
    PM_FIELD(4, admin_mode, u32),
    PM_FIELD(8, oper_mode, u32),
    PM_FIELD(12, port_vsan, u16),
    PM_FIELD(14, oper_state, bytes),
    PM_FIELD(15, fcid, bytes, 4),
    PM_FIELD(19, ip_address, bytes, 4),
    PM_FIELD(27, oper_speed, u32),
    PM_FIELD(31, mtu, u32),
    PM_FIELD(35, bandwidth, u32),
    PM_FIELD(39, state_reason, bytes),
    PM_FIELD(40, admin_trunk_mode, bytes),
    PM_FIELD(41, oper_trunk_mode, bytes),
    PM_FIELD(43, service_state, u32),
    PM_FIELD(47, parent_if_index, if_index),
});
#undef PM_FIELD

// The value of an attribute element: the interface index that it belongs to, as at the start of the base record, and
// the attribute. Owner texts carry no index.
inline constexpr size_t attribute_offset = 4;
inline constexpr size_t attribute_value_size = 8;
inline constexpr uint16_t owner_attribute = 110;
inline constexpr size_t owner_text_size = 81;

// How an attribute is taken from its four bytes.
enum class attribute_kind : uint8_t {
    unknown,
    number,                 // 32 bits, converted
    number_to_16,           // the same, cut to its low 16 bits
    number_to_8,            // the same, cut to its low 8 bits
    first_byte,             // the first byte alone
    first_byte_to_32,       // the same, into a 32-bit member
    raw,                    // four bytes that keep network order
    number_held,            // a number that waits for the element that stores it
    number_to_16_and_held,  // number_to_16; stores the held number with it
    text,                   // the owner's text
    ignored
};

struct port_attribute {
    uint16_t type;
    attribute_kind kind;
    size_t member;  // offset in pm_port_info_t
};

#define PM_ATTRIBUTE(type, kind, member) \
    port_attribute { type, attribute_kind::kind, offsetof(pm_port_info_t, member) }
inline constexpr auto port_attributes = std::to_array({
    PM_ATTRIBUTE(4, number_to_8, rate_mode),
    PM_ATTRIBUTE(22, number, bb_credit[4]),
    PM_ATTRIBUTE(23, number, auto_neg),
    PM_ATTRIBUTE(24, number_to_8, duplex),
    PM_ATTRIBUTE(30, number_to_8, phy_layer),
    PM_ATTRIBUTE(31, number_to_8, encap),
    PM_ATTRIBUTE(32, number_to_8, bb_scn),
    PM_ATTRIBUTE(36, first_byte, ignore_param),
    PM_ATTRIBUTE(37, number, bb_credit_multiplier),
    PM_ATTRIBUTE(38, number, track_mode),
    PM_ATTRIBUTE(39, first_byte_to_32, delayed_trap_state),
    PM_ATTRIBUTE(42, number, ec_bb_credit),
    PM_ATTRIBUTE(43, first_byte, fcot_present),
    PM_ATTRIBUTE(67, first_byte, tlv_67),
    PM_ATTRIBUTE(68, first_byte, tlv_68),
    PM_ATTRIBUTE(74, number, bb_credit_performance_buf),
    PM_ATTRIBUTE(78, first_byte, tlv_78),
    PM_ATTRIBUTE(81, raw, tlv_81),
    PM_ATTRIBUTE(82, raw, tlv_82),
    PM_ATTRIBUTE(83, number_to_16, native_vlan),
    PM_ATTRIBUTE(84, number_to_16, flowctrl_receive),
    PM_ATTRIBUTE(85, number_to_16, flowctrl_send),
    PM_ATTRIBUTE(86, number, fcip_params[1]),
    PM_ATTRIBUTE(87, number, fcip_params[2]),
    PM_ATTRIBUTE(88, number, fcip_params[5]),
    PM_ATTRIBUTE(89, number, fcip_params[4]),
    PM_ATTRIBUTE(90, number, fcip_params[3]),
    PM_ATTRIBUTE(91, number_held, fcip_params[6]),
    PM_ATTRIBUTE(92, number_to_16_and_held, fcip_tcp_port),
    PM_ATTRIBUTE(93, number, tlv_93),
    PM_ATTRIBUTE(94, number_to_16, tlv_94),
    PM_ATTRIBUTE(95, number, tlv_95),
    PM_ATTRIBUTE(97, raw, fcip_params[0]),
    PM_ATTRIBUTE(98, number, promiscuous),
    port_attribute{105, attribute_kind::ignored, 0},
    PM_ATTRIBUTE(106, number, tlv_106),
    PM_ATTRIBUTE(107, number, tlv_107),
    PM_ATTRIBUTE(108, number, tlv_108),
    PM_ATTRIBUTE(owner_attribute, text, owner),
});
#undef PM_ATTRIBUTE

// The member that a number_to_16_and_held element stores the held number in.
inline constexpr size_t held_number_member = offsetof(pm_port_info_t, fcip_params[6]);

}  // namespace pm

#endif
