// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstring>

#include "exported_calls.h"
#include "integration/virtual_switch/virtual_switch_test.h"
#include "platform/bitset.h"
#include "platform/if_index.h"
#include "port_mgr/port_mgr_common.h"

namespace {

constexpr uint32_t chassis_with_map = 6;
constexpr uint32_t chassis_with_database = 10;

bool is_text(const char *text) { return text != nullptr && *text != '\0'; }

template <auto function>
bool writes_text(const received_answers &) {
    std::array<char, 80> text{};
    return function(1, text.data()) == text.data() && is_text(text.data());
}

template <auto function, auto... values>
bool tells_text(const received_answers &) {
    return is_text(function(values...));
}

// A function that tells a number; the value that it is asked with is chosen so that this is not 0.
template <auto function, auto value>
bool tells_number(const received_answers &) {
    return function(value) != 0;
}

template <auto function>
bool tells_of_fc_port(const received_answers &) {
    return function(index_of("fc1/1")) != 0;
}

template <auto function>
bool tells_of_channel(const received_answers &) {
    return function(index_of("port-channel20")) != 0;
}

bool says_who_owns(const received_answers &) { return std::strcmp(port_owner_string("switch"), "switch") == 0; }

template <uint32_t chassis_type>
bool finds_members(const received_answers &) {
    std::array<uint8_t, 172> record{};
    const int32_t status = get_port_channel_members(chassis_type, index_of("port-channel5"), record.data());
    EXPECT_TRUE(status == 0 || status == -1);
    return status == 0;
}

bool finds_channel_of_port(const received_answers &) {
    const int32_t status = get_port_channel_info(index_of("fc1/1"), index_of("port-channel5"));
    EXPECT_TRUE(status == 0 || status == -1);
    return status == 0;
}

bool reads_kernel_counters(const received_answers &) {
    pm_net_dev_stats_t before{};
    std::memset(&before, 0xaa, sizeof before);
    pm_net_dev_stats_t stats = before;
    const int32_t status = pm_get_proc_net_dev_stats("lo", &stats);
    const bool is_untouched = std::memcmp(&stats, &before, sizeof stats) == 0;
    EXPECT_EQ(is_untouched, status == -1);
    return status == 0;
}

bool counts_range(const received_answers &) {
    uint32_t count = 0;
    return pm_get_num_ports_in_if_index_range(index_of("fc1/1"), index_of("fc1/4"), &count) == 0 && count == 4;
}

bool steps_range(const received_answers &) {
    if_index_t member = 0;
    return pm_get_if_index_in_range(index_of("fc1/1"), index_of("fc1/4"), &member, 2) == 0 &&
           member == index_of("fc1/3");
}

bool encodes_and_decodes(const received_answers &) {
    pm_cfg_tlv_t element{};
    const uint8_t on = 1;
    uint8_t type = 0;
    uint8_t length = 0;
    uint8_t value = 0;
    return pm_encode_tlv(&element, PM_ATTR_BEACON_MODE, sizeof on, &on) == 0 &&
           pm_decode_tlv(&element, &type, &length, &value) == 0 && value == on;
}

// An attribute without a kind is reported, on standard output and as an assertion.
bool refuses_attribute(const received_answers &) {
    pm_cfg_tlv_t element{};
    const uint8_t value = 0;
    return pm_encode_tlv(&element, 255, sizeof value, &value) == PM_ERR_TLV;
}

bool finds_sub_interface_entry(const received_answers &) {
    alignas(pm_config_sub_intf_req_t)
        std::array<uint8_t, sizeof(pm_config_sub_intf_req_t) + sizeof(pm_sub_intf_entry_t)>
            room{};
    uint32_t index = 1;
    return pm_get_index_for_intf_in_config_sub_intf_payload(reinterpret_cast<pm_config_sub_intf_req_t *>(room.data()),
                                                            index_of("Ethernet4/5"), 1, &index) == 0 &&
           index == 0;
}

bool checks_sub_interfaces(const received_answers &) {
    bitset_t numbers{};
    numbers.size = sizeof numbers.bits;
    numbers.bits[1] = 1;
    return pm_check_is_valid_sub_intf_bitset(&numbers) == 1;
}

bool makes_vsan_set(const received_answers &) {
    constexpr flexi_bitset_t none{};
    vsan_bitset_t vsans{};
    return pm_create_vsan_bitset_from_pm_flexi_bitset(&none, &vsans) == 0 && vsans.size == sizeof vsans.bits;
}

bool identifies_x2(const received_answers &) {
    pm_x2_ident_t ident{};
    ident.dwdm_channel = 20;
    return pm_is_x2_dwdm(&ident) == 1 && pm_get_x2_fcot_type(&ident) == 20;
}

constexpr exported_call looks_up(const char *name, bool (*run)(const received_answers &)) { return {name, true, run}; }
constexpr exported_call computes(const char *name, bool (*run)(const received_answers &)) { return {name, false, run}; }

constexpr std::array calls{
    looks_up("get_port_channel_info.database", finds_channel_of_port),
    looks_up("get_port_channel_members.database", finds_members<chassis_with_database>),
    computes("get_port_channel_members.map", finds_members<chassis_with_map>),
    looks_up("pm_get_proc_net_dev_stats", reads_kernel_counters),
    computes("pm_get_mts_sap", tells_of_channel<pm_get_mts_sap>),
    computes("pm_is_ether_channel", tells_of_channel<pm_is_ether_channel>),
    computes("pm_port_channel_type", tells_of_channel<pm_port_channel_type>),
    computes("pm_get_num_ports_in_if_index_range", counts_range),
    computes("pm_get_if_index_in_range", steps_range),
    computes("pm_encode_tlv", encodes_and_decodes),
    computes("pm_decode_tlv", encodes_and_decodes),
    computes("pm_encode_tlv.report", refuses_attribute),
    computes("pm_get_index_for_intf_in_config_sub_intf_payload", finds_sub_interface_entry),
    computes("pm_check_is_valid_sub_intf_bitset", checks_sub_interfaces),
    computes("pm_create_vsan_bitset_from_pm_flexi_bitset", makes_vsan_set),
    computes("pm_is_x2_dwdm", identifies_x2),
    computes("pm_get_x2_fcot_type", identifies_x2),
    computes("pm_is_transceiver_supported", tells_of_fc_port<pm_is_transceiver_supported>),
    computes("pm_is_beacon_mode_supported", tells_of_fc_port<pm_is_beacon_mode_supported>),
    computes("pm_is_bbcredit_supported", tells_of_fc_port<pm_is_bbcredit_supported>),
    computes("pm_is_bundle_port_type", tells_of_channel<pm_is_bundle_port_type>),
    computes("pm_is_xgfc_interface", [](const received_answers &) { return pm_is_xgfc_interface(0) == 0; }),
    computes("pm_is_port_mode_supported", tells_number<pm_is_port_mode_supported, IF_TYPE_FC>),
    computes("pm_is_trunk_mode_supported", tells_number<pm_is_trunk_mode_supported, IF_TYPE_FC>),
    computes("pm_is_port_speed_supported", tells_number<pm_is_port_speed_supported, IF_TYPE_FC>),
    computes("pm_is_duplex_mode_supported", tells_number<pm_is_duplex_mode_supported, IF_TYPE_MGMT>),
    computes("pm_map_snmp_error_code", tells_number<pm_map_snmp_error_code, PM_ERR_FAILURE>),
    computes("pm_cli_dump_port_duplex_mode", tells_text<pm_cli_dump_port_duplex_mode, 1>),
    computes("pm_cli_dump_port_rate_mode", tells_text<pm_cli_dump_port_rate_mode, 1>),
    computes("pm_cli_dump_port_speed", tells_text<pm_cli_dump_port_speed, 1000>),
    computes("pm_cli_dump_trunk_mode", tells_text<pm_cli_dump_trunk_mode, 2>),
    computes("pm_delayed_trap_state_string", tells_text<pm_delayed_trap_state_string, 1>),
    computes("port_auto_neg_string", tells_text<port_auto_neg_string, 1>),
    computes("port_beacon_mode_string", tells_text<port_beacon_mode_string, 1>),
    computes("port_bb_scn_cfg_string", tells_text<port_bb_scn_cfg_string, 1>),
    computes("port_down_on_link_failure_string", tells_text<port_down_on_link_failure_string, 3>),
    computes("port_duplex_mode_string", tells_text<port_duplex_mode_string, 1>),
    computes("port_encap_string", tells_text<port_encap_string, 1>),
    computes("port_flowctrl_mode_string", tells_text<port_flowctrl_mode_string, 1>),
    computes("port_ignore_param_string", tells_text<port_ignore_param_string, 1>),
    computes("port_mode_string", tells_text<port_mode_string, 1>),
    computes("port_owner_string", says_who_owns),
    computes("port_phy_layer_string", tells_text<port_phy_layer_string, 1>),
    computes("port_promiscuous_string", tells_text<port_promiscuous_string, 1>),
    computes("port_rate_mode_string", tells_text<port_rate_mode_string, 1>),
    computes("port_service_state_string", tells_text<port_service_state_string, 1>),
    computes("port_snmp_trap_string", tells_text<port_snmp_trap_string, 1>),
    computes("port_state_reason_string", tells_text<port_state_reason_string, 1, 1>),
    computes("port_state_string", tells_text<port_state_string, 1>),
    computes("port_track_mode_string", tells_text<port_track_mode_string, 1>),
    computes("port_trunking_mode_string", tells_text<port_trunking_mode_string, 1>),
    computes("port_type_string", tells_text<port_type_string, 1>),
    computes("port_auto_negotiate_string", writes_text<port_auto_negotiate_string>),
    computes("port_bb_credit_multiplier_string", writes_text<port_bb_credit_multiplier_string>),
    computes("port_bb_credit_performance_buf_string", writes_text<port_bb_credit_performance_buf_string>),
    computes("port_bb_credit_string", writes_text<port_bb_credit_string>),
    computes("port_ec_bb_credit_string", writes_text<port_ec_bb_credit_string>),
    computes("port_promiscuous_mode_string", writes_text<port_promiscuous_mode_string>),
    computes("port_rxbufsize_string", writes_text<port_rxbufsize_string>),
    computes("port_speed_string", writes_text<port_speed_string>),
    computes("port_speed_string_gbps", writes_text<port_speed_string_gbps>),
};

}  // namespace

std::span<const exported_call> local_calls() { return calls; }
