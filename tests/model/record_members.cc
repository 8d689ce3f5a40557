// SPDX-License-Identifier: Apache-2.0
#include "record_members.h"

#include <algorithm>
#include <cstddef>

#define MEMBER(name) \
    { #name, offsetof(record, name), sizeof(record::name) }

namespace model {
namespace {

constexpr size_t bytes_in(std::span<const member> members) {
    size_t bytes = 0;
    for (const member &each : members) bytes += each.size;
    return bytes;
}

}  // namespace

std::string first_difference(std::span<const member> members, const uint8_t *expected, const uint8_t *seen) {
    for (const member &each : members) {
        const uint8_t *const wanted = expected + each.offset;
        const uint8_t *const found = seen + each.offset;
        if (std::equal(wanted, wanted + each.size, found)) continue;
        return std::string(each.name) + " is " + support::hex(found, each.size) + ", not " +
               support::hex(wanted, each.size);
    }
    return "";
}

template <>
std::span<const member> members_of<pm_port_info_t>() {
    using record = pm_port_info_t;
    static constexpr member members[] = {MEMBER(if_index),
                                         MEMBER(admin_mode),
                                         MEMBER(description),
                                         MEMBER(admin_speed),
                                         MEMBER(admin_state),
                                         MEMBER(oper_mode),
                                         MEMBER(flowctrl_receive),
                                         MEMBER(lane_state),
                                         MEMBER(flowctrl_send),
                                         MEMBER(port_vsan),
                                         MEMBER(bb_credit),
                                         MEMBER(rx_buf_size),
                                         MEMBER(oper_state),
                                         MEMBER(fcid),
                                         MEMBER(ip_address),
                                         MEMBER(ip_mask),
                                         MEMBER(oper_speed),
                                         MEMBER(mtu),
                                         MEMBER(bandwidth),
                                         MEMBER(native_vlan),
                                         MEMBER(state_reason),
                                         MEMBER(admin_trunk_mode),
                                         MEMBER(oper_trunk_mode),
                                         MEMBER(promiscuous),
                                         MEMBER(beacon_mode),
                                         MEMBER(service_state),
                                         MEMBER(port_type),
                                         MEMBER(auto_neg),
                                         MEMBER(duplex),
                                         MEMBER(rate_mode),
                                         MEMBER(snmp_trap),
                                         MEMBER(down_on_link_failure),
                                         MEMBER(parent_if_index),
                                         MEMBER(link_error_count),
                                         MEMBER(phy_layer),
                                         MEMBER(encap),
                                         MEMBER(bb_scn),
                                         MEMBER(ignore_param),
                                         MEMBER(track_mode),
                                         MEMBER(delayed_trap_state),
                                         MEMBER(ec_bb_credit),
                                         MEMBER(fcot_present),
                                         MEMBER(tlv_67),
                                         MEMBER(tlv_68),
                                         MEMBER(bb_credit_multiplier),
                                         MEMBER(bb_credit_performance_buf),
                                         MEMBER(tlv_78),
                                         MEMBER(tlv_81),
                                         MEMBER(reserved_49),
                                         MEMBER(tlv_82),
                                         MEMBER(reserved_51),
                                         MEMBER(fcip_params),
                                         MEMBER(fcip_tcp_port),
                                         MEMBER(tlv_93),
                                         MEMBER(tlv_94),
                                         MEMBER(tlv_95),
                                         MEMBER(owner),
                                         MEMBER(reserved_58),
                                         MEMBER(tlv_106),
                                         MEMBER(tlv_107),
                                         MEMBER(tlv_108)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_port_info_brief_t>() {
    using record = pm_port_info_brief_t;
    static constexpr member members[] = {MEMBER(if_index),         MEMBER(admin_mode),
                                         MEMBER(oper_mode),        MEMBER(port_vsan),
                                         MEMBER(oper_state),       MEMBER(fcid),
                                         MEMBER(ip_address),       MEMBER(reserved_23),
                                         MEMBER(oper_speed),       MEMBER(mtu),
                                         MEMBER(bandwidth),        MEMBER(state_reason),
                                         MEMBER(admin_trunk_mode), MEMBER(oper_trunk_mode),
                                         MEMBER(reserved_42),      MEMBER(service_state),
                                         MEMBER(parent_if_index)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_set_port_result_t>() {
    using record = pm_set_port_result_t;
    static constexpr member members[] = {MEMBER(if_index), MEMBER(status)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_fcot_info_t>() {
    using record = pm_fcot_info_t;
    static constexpr member members[] = {MEMBER(if_index), MEMBER(attributes),   MEMBER(serial_id),
                                         MEMBER(flags),    MEMBER(value_a),      MEMBER(diagnostics),
                                         MEMBER(value_b),  MEMBER(reserved_262), MEMBER(layout)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_sfp_diag_info_t>() {
    using record = pm_sfp_diag_info_t;
    static constexpr member members[] = {MEMBER(flags), MEMBER(status),   MEMBER(temperature), MEMBER(voltage),
                                         MEMBER(bias),  MEMBER(tx_power), MEMBER(rx_power),    MEMBER(reserved)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_sfp_diag_extra_t>() {
    using record = pm_sfp_diag_extra_t;
    static constexpr member members[] = {MEMBER(alarms), MEMBER(warnings), MEMBER(age)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_eth_stats_t>() {
    using record = pm_eth_stats_t;
    static constexpr member members[] = {MEMBER(reserved_0),
                                         MEMBER(communication_status),
                                         MEMBER(reserved_12),
                                         MEMBER(result),
                                         MEMBER(reserved_28),
                                         MEMBER(traffic),
                                         MEMBER(seconds_since_clear),
                                         MEMBER(reserved_228),
                                         MEMBER(rx_pause_frames),
                                         MEMBER(tx_pause_frames),
                                         MEMBER(crc_errors),
                                         MEMBER(alignment_errors),
                                         MEMBER(symbol_errors),
                                         MEMBER(undersize_frames),
                                         MEMBER(oversize_frames),
                                         MEMBER(fragments),
                                         MEMBER(jabbers),
                                         MEMBER(rx_overruns),
                                         MEMBER(tx_underruns),
                                         MEMBER(collisions),
                                         MEMBER(late_collisions),
                                         MEMBER(excessive_collisions),
                                         MEMBER(deferred_frames),
                                         MEMBER(carrier_losses),
                                         MEMBER(link_resets),
                                         MEMBER(reserved_308)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_net_dev_stats_t>() {
    using record = pm_net_dev_stats_t;
    static constexpr member members[] = {
        MEMBER(rx_packets),     MEMBER(tx_packets),        MEMBER(rx_bytes),       MEMBER(tx_bytes),
        MEMBER(rx_errors),      MEMBER(tx_errors),         MEMBER(rx_dropped),     MEMBER(tx_dropped),
        MEMBER(rx_multicast),   MEMBER(rx_compressed),     MEMBER(tx_compressed),  MEMBER(rx_frame_errors),
        MEMBER(rx_fifo_errors), MEMBER(tx_carrier_errors), MEMBER(tx_fifo_errors), MEMBER(collisions)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_system_default_config_t>() {
    using record = pm_system_default_config_t;
    static constexpr member members[] = {MEMBER(type), MEMBER(length), MEMBER(value)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

template <>
std::span<const member> members_of<pm_iterator_t>() {
    using record = pm_iterator_t;
    static constexpr member members[] = {MEMBER(mark), MEMBER(message_id), MEMBER(message_words), MEMBER(reserved)};
    static_assert(bytes_in(members) == sizeof(record));
    return members;
}

}  // namespace model
