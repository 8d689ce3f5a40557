// SPDX-License-Identifier: Apache-2.0
// presentation.h: how members are shown that are more than numbers, or bytes.
#ifndef DISSECTOR_PRESENTATION_H
#define DISSECTOR_PRESENTATION_H

#include <array>
#include <string_view>

namespace dissector {

struct presentation {
    std::string_view member;
    std::string_view kind;   // of a member that travels as it lies in memory; "numbers" is a number for each byte
    std::string_view texts;  // of a number
};

// Members of one name mean the same in all records.
inline constexpr auto presentations = std::to_array<presentation>({
    {"admin_mode", "number", "port_mode"},
    {"description", "text", ""},
    {"admin_speed", "number", "speed"},
    {"admin_state", "number", "port_state"},
    {"oper_mode", "number", "port_mode"},
    {"flowctrl_receive", "number", "flowctrl"},
    {"lane_state", "numbers", "port_state"},
    {"flowctrl_send", "number", "flowctrl"},
    {"oper_state", "number", "port_state"},
    {"fcid", "fc_address", ""},
    {"ip_address", "ipv4", ""},
    {"ip_mask", "ipv4", ""},
    {"oper_speed", "number", "speed"},
    {"state_reason", "number", "state_reason"},
    {"admin_trunk_mode", "number", "trunk_mode"},
    {"oper_trunk_mode", "number", "trunk_mode"},
    {"promiscuous", "number", "on_off"},
    {"beacon_mode", "number", "on_off"},
    {"service_state", "number", "service_state"},
    {"port_type", "number", "port_type"},
    {"auto_neg", "number", "on_off"},
    {"duplex", "number", "duplex"},
    {"rate_mode", "number", "rate_mode"},
    {"snmp_trap", "numbers", "on_off"},
    {"down_on_link_failure", "number", "down_on_link_failure"},
    {"phy_layer", "number", "phy_layer"},
    {"encap", "number", "encap"},
    {"bb_scn", "number", "on_off"},
    {"ignore_param", "number", "ignore_param"},
    {"track_mode", "number", "track_mode"},
    {"delayed_trap_state", "number", "delayed_trap_state"},
    {"owner", "text", ""},
    {"status", "number", "status"},
    {"layout", "number", "transceiver_layout"},
    {"communication_status", "number", ""},
    {"result", "number", ""},
    {"resource", "number", "resource"},
    {"operation", "number", "sub_interface_operation"},
    {"main", "if_index", ""},
    {"first", "if_index", ""},
    {"last", "if_index", ""},
    {"temperature.value", "signed_number", ""},
    {"temperature.high_alarm", "signed_number", ""},
    {"temperature.high_warning", "signed_number", ""},
    {"temperature.low_warning", "signed_number", ""},
    {"temperature.low_alarm", "signed_number", ""},
    {"sub_interfaces.size", "host_number", ""},
    {"sub_interfaces.bits", "bits", ""},
});

// Of a member without one, nothing is said.
constexpr presentation presentation_of(std::string_view member) {
    for (const presentation &known : presentations) {
        if (known.member == member) return known;
    }
    return {};
}

}  // namespace dissector

#endif
