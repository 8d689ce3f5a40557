// SPDX-License-Identifier: Apache-2.0
// member_names.h: the names of what travels, for tools that show it. The tables of fields say where a member lies on
// the wire; these say what it is called, for every byte of its record.
#ifndef PROTOCOL_MEMBER_NAMES_H
#define PROTOCOL_MEMBER_NAMES_H

#include <array>
#include <cstddef>

#include "port_mgr/ethernet_stats.h"
#include "port_mgr/messaging.h"
#include "port_mgr/port_info_record.h"
#include "port_mgr/port_info_response.h"
#include "port_mgr/sfp_diagnostics.h"
#include "port_mgr/sub_interface_config.h"
#include "port_mgr/transceiver_info.h"

namespace pm {

struct member_name {
    size_t offset;  // in the record in memory
    size_t size;
    const char *name;
};

// Whether the names are those of all members of a record, in its order.
template <typename Record>
constexpr bool names_every_member(const auto &names) {
    size_t end = 0;
    for (const member_name &member : names) {
        if (member.offset != end) return false;
        end += member.size;
    }
    return end == sizeof(Record);
}

#define PM_NAME(member) \
    member_name { offsetof(PM_RECORD, member), sizeof(PM_RECORD::member), #member }

#define PM_RECORD pm_port_info_t
inline constexpr auto port_info_members = std::to_array({
    PM_NAME(if_index),
    PM_NAME(admin_mode),
    PM_NAME(description),
    PM_NAME(admin_speed),
    PM_NAME(admin_state),
    PM_NAME(oper_mode),
    PM_NAME(flowctrl_receive),
    PM_NAME(lane_state),
    PM_NAME(flowctrl_send),
    PM_NAME(port_vsan),
    PM_NAME(bb_credit),
    PM_NAME(rx_buf_size),
    PM_NAME(oper_state),
    PM_NAME(fcid),
    PM_NAME(ip_address),
    PM_NAME(ip_mask),
    PM_NAME(oper_speed),
    PM_NAME(mtu),
    PM_NAME(bandwidth),
    PM_NAME(native_vlan),
    PM_NAME(state_reason),
    PM_NAME(admin_trunk_mode),
    PM_NAME(oper_trunk_mode),
    PM_NAME(promiscuous),
    PM_NAME(beacon_mode),
    PM_NAME(service_state),
    PM_NAME(port_type),
    PM_NAME(auto_neg),
    PM_NAME(duplex),
    PM_NAME(rate_mode),
    PM_NAME(snmp_trap),
    PM_NAME(down_on_link_failure),
    PM_NAME(parent_if_index),
    PM_NAME(link_error_count),
    PM_NAME(phy_layer),
    PM_NAME(encap),
    PM_NAME(bb_scn),
    PM_NAME(ignore_param),
    PM_NAME(track_mode),
    PM_NAME(delayed_trap_state),
    PM_NAME(ec_bb_credit),
    PM_NAME(fcot_present),
    PM_NAME(tlv_67),
    PM_NAME(tlv_68),
    PM_NAME(bb_credit_multiplier),
    PM_NAME(bb_credit_performance_buf),
    PM_NAME(tlv_78),
    PM_NAME(tlv_81),
    PM_NAME(reserved_49),
    PM_NAME(tlv_82),
    PM_NAME(reserved_51),
    PM_NAME(fcip_params),
    PM_NAME(fcip_tcp_port),
    PM_NAME(tlv_93),
    PM_NAME(tlv_94),
    PM_NAME(tlv_95),
    PM_NAME(owner),
    PM_NAME(reserved_58),
    PM_NAME(tlv_106),
    PM_NAME(tlv_107),
    PM_NAME(tlv_108),
});
static_assert(names_every_member<PM_RECORD>(port_info_members));
#undef PM_RECORD

#define PM_RECORD pm_port_info_brief_t
inline constexpr auto port_info_brief_members = std::to_array({
    PM_NAME(if_index),
    PM_NAME(admin_mode),
    PM_NAME(oper_mode),
    PM_NAME(port_vsan),
    PM_NAME(oper_state),
    PM_NAME(fcid),
    PM_NAME(ip_address),
    PM_NAME(reserved_23),
    PM_NAME(oper_speed),
    PM_NAME(mtu),
    PM_NAME(bandwidth),
    PM_NAME(state_reason),
    PM_NAME(admin_trunk_mode),
    PM_NAME(oper_trunk_mode),
    PM_NAME(reserved_42),
    PM_NAME(service_state),
    PM_NAME(parent_if_index),
});
static_assert(names_every_member<PM_RECORD>(port_info_brief_members));
#undef PM_RECORD

#define PM_RECORD pm_if_index_range_t
inline constexpr auto if_index_range_members = std::to_array({PM_NAME(first), PM_NAME(last)});
static_assert(names_every_member<PM_RECORD>(if_index_range_members));
#undef PM_RECORD

#define PM_RECORD pm_set_port_result_t
inline constexpr auto set_port_result_members = std::to_array({PM_NAME(if_index), PM_NAME(status)});
static_assert(names_every_member<PM_RECORD>(set_port_result_members));
#undef PM_RECORD

#define PM_RECORD pm_fcot_info_t
inline constexpr auto fcot_info_members = std::to_array({
    PM_NAME(if_index),
    PM_NAME(attributes),
    PM_NAME(serial_id),
    PM_NAME(flags),
    PM_NAME(value_a),
    PM_NAME(diagnostics),
    PM_NAME(value_b),
    PM_NAME(reserved_262),
    PM_NAME(layout),
});
static_assert(names_every_member<PM_RECORD>(fcot_info_members));
#undef PM_RECORD

#define PM_RECORD pm_sfp_quantity_t
inline constexpr auto sfp_quantity_members = std::to_array({
    PM_NAME(value),
    PM_NAME(high_alarm),
    PM_NAME(high_warning),
    PM_NAME(low_warning),
    PM_NAME(low_alarm),
});
static_assert(names_every_member<PM_RECORD>(sfp_quantity_members));
#undef PM_RECORD

#define PM_RECORD pm_sfp_diag_info_t
inline constexpr auto sfp_diag_info_members = std::to_array({
    PM_NAME(flags),
    PM_NAME(status),
    PM_NAME(temperature),
    PM_NAME(voltage),
    PM_NAME(bias),
    PM_NAME(tx_power),
    PM_NAME(rx_power),
    PM_NAME(reserved),
});
static_assert(names_every_member<PM_RECORD>(sfp_diag_info_members));
#undef PM_RECORD

#define PM_RECORD pm_sfp_diag_extra_t
inline constexpr auto sfp_diag_extra_members = std::to_array({PM_NAME(alarms), PM_NAME(warnings), PM_NAME(age)});
static_assert(names_every_member<PM_RECORD>(sfp_diag_extra_members));
#undef PM_RECORD

#define PM_RECORD pm_eth_traffic_t
inline constexpr auto eth_traffic_members = std::to_array({
    PM_NAME(octets),
    PM_NAME(frames),
    PM_NAME(errors),
    PM_NAME(drops),
});
static_assert(names_every_member<PM_RECORD>(eth_traffic_members));
#undef PM_RECORD

#define PM_RECORD pm_eth_stats_t
inline constexpr auto eth_stats_members = std::to_array({
    PM_NAME(reserved_0),
    PM_NAME(communication_status),
    PM_NAME(reserved_12),
    PM_NAME(result),
    PM_NAME(reserved_28),
    PM_NAME(traffic),
    PM_NAME(seconds_since_clear),
    PM_NAME(reserved_228),
    PM_NAME(rx_pause_frames),
    PM_NAME(tx_pause_frames),
    PM_NAME(crc_errors),
    PM_NAME(alignment_errors),
    PM_NAME(symbol_errors),
    PM_NAME(undersize_frames),
    PM_NAME(oversize_frames),
    PM_NAME(fragments),
    PM_NAME(jabbers),
    PM_NAME(rx_overruns),
    PM_NAME(tx_underruns),
    PM_NAME(collisions),
    PM_NAME(late_collisions),
    PM_NAME(excessive_collisions),
    PM_NAME(deferred_frames),
    PM_NAME(carrier_losses),
    PM_NAME(link_resets),
    PM_NAME(reserved_308),
});
static_assert(names_every_member<PM_RECORD>(eth_stats_members));
#undef PM_RECORD

#define PM_RECORD pm_module_resource_t
inline constexpr auto module_resource_members = std::to_array({
    PM_NAME(module),
    PM_NAME(resource),
    PM_NAME(total),
    PM_NAME(used),
});
static_assert(names_every_member<PM_RECORD>(module_resource_members));
#undef PM_RECORD

#define PM_RECORD pm_sub_intf_entry_t
inline constexpr auto sub_intf_entry_members = std::to_array({
    PM_NAME(reserved_0),
    PM_NAME(main),
    PM_NAME(word),
    PM_NAME(sub_interfaces.size),
    PM_NAME(sub_interfaces.bits),
});
static_assert(names_every_member<PM_RECORD>(sub_intf_entry_members));
#undef PM_RECORD

#define PM_RECORD pm_config_sub_intf_req_t
inline constexpr auto config_sub_intf_req_members = std::to_array({
    PM_NAME(operation),
    PM_NAME(reserved_4),
    PM_NAME(entry_count),
});
static_assert(names_every_member<PM_RECORD>(config_sub_intf_req_members));
#undef PM_RECORD

#undef PM_NAME

}  // namespace pm

#endif
