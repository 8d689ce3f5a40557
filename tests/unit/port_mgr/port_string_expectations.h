// SPDX-License-Identifier: Apache-2.0
// port_string_expectations.h: the text that each attribute string function has to give for each value.
#ifndef UNIT_PORT_MGR_PORT_STRING_EXPECTATIONS_H
#define UNIT_PORT_MGR_PORT_STRING_EXPECTATIONS_H

#include <string>
#include <vector>

#include "port_mgr/port_strings.h"

namespace unit {

struct value_text {
    uint32_t value;
    const char *text;
};
using value_texts = std::vector<value_text>;

// A function that returns one of the library's texts; `otherwise` is for all other values, null for those that name
// the value in the shared buffer.
template <typename Value>
struct text_function {
    const char *name;
    const char *(*function)(Value);
    value_texts texts;
    const char *otherwise = nullptr;
};

// A function that writes its text into the caller's buffer; `otherwise` makes the text for all other values.
template <typename Value>
struct writing_function {
    const char *name;
    char *(*function)(Value, char *);
    value_texts texts;
    std::string (*otherwise)(Value);
};

// ---- texts of the library, with other values in the shared buffer

inline const value_texts port_modes{
    {65535, "ALL"},
    {65531, "Not E"},
    {65087, "Not FL"},
    {96, "FX"},
    {1, "auto"},
    {2, "SD"},
    {32768, "ST"},
    {4, "E"},
    {8, "TE"},
    {16, "TL"},
    {32, "F"},
    {64, "FL"},
    {128, "FL"},
    {256, "FL"},
    {512, "IPS"},
    {1024, "ISCSI"},
    {524288, "FA"},
    {16384, "NP"},
    {1048576, "trunk"},
    {4194304, "private-vlan host"},
    {8388608, "private-vlan promiscuous"},
    {134217728, "TNP"},
    {67108864, "TF"},
};

inline const std::vector<text_function<int32_t>> shared_texts_of_words{
    {"port_mode_string", port_mode_string, port_modes},
    {"port_service_state_string", port_service_state_string, {{0, "in service"}, {1, "out of service"}}},
    {"port_type_string", port_type_string, {{1, "external"}, {2, "internal"}, {3, "hidden"}}},
    {"port_promiscuous_string", port_promiscuous_string, {{1, "on"}, {2, "off"}}},
    {"port_auto_neg_string", port_auto_neg_string, {{1, "on"}, {2, "off"}}},
    {"port_down_on_link_failure_string", port_down_on_link_failure_string, {{3, "enabled"}, {4, "disabled"}}},
};

inline const std::vector<text_function<uint8_t>> shared_texts_of_bytes{
    {"port_beacon_mode_string", port_beacon_mode_string, {{1, "on"}, {2, "off"}}},
    {"port_bb_scn_cfg_string", port_bb_scn_cfg_string, {{1, "on"}, {2, "off"}}},
    {"port_rate_mode_string", port_rate_mode_string, {{1, "dedicated"}, {2, "shared"}}},
    {"port_ignore_param_string", port_ignore_param_string, {{1, "bit error on"}, {2, "bit error off"}}},
    {"port_trunking_mode_string", port_trunking_mode_string, {{1, "off"}, {2, "on"}, {3, "auto"}}},
    {"port_snmp_trap_string", port_snmp_trap_string, {{1, "on"}, {2, "off"}}},
};

// ---- texts of the library, with one for all other values

inline const std::vector<text_function<uint8_t>> texts_of_bytes{
    {"port_state_string",
     port_state_string,
     {{255, "all"}, {1, "up"}, {16, "down"}, {2, "down"}, {8, "trunking"}, {4, "testing"}},
     "unknown"},
    {"port_duplex_mode_string", port_duplex_mode_string, {{1, "Half"}, {2, "Full"}, {3, "Auto"}}, "unknown"},
    {"port_phy_layer_string",
     port_phy_layer_string,
     {{1, "FC"}, {2, "ethernet"}, {3, "FC virtual"}, {4, "Inband"}, {5, "EOBC"}, {6, "Management"}},
     "Unknown"},
    {"port_encap_string", port_encap_string, {{1, "normal"}, {2, "eisl"}, {3, "internal"}}, "unknown"},
};

inline const text_function<uint16_t> flow_control_texts{
    "port_flowctrl_mode_string",
    port_flowctrl_mode_string,
    {{1, "on"}, {2, "on"}, {4, "desired"}, {8, "desired"}},
    "off",
};

inline const std::vector<text_function<int32_t>> texts_of_words{
    {"port_track_mode_string", port_track_mode_string, {{0, "operationally-bound"}, {1, "force_shut"}}, ""},
    {"pm_delayed_trap_state_string", pm_delayed_trap_state_string, {{1, "disabled"}, {2, "FX"}}, "unknown"},
};

// ---- texts in the caller's buffer

inline std::string number(int32_t value) { return std::to_string(value); }

inline std::string credits(int32_t value) {
    const int64_t bit_30 = 1 << 30;
    if ((value & bit_30) != 0) return std::to_string(value - bit_30) + " (mode E)";
    if (value < 0) return std::to_string(value + 2 * bit_30) + " (mode Fx)";
    return std::to_string(value);
}

inline const writing_function<uint32_t> speed{
    "port_speed_string",
    port_speed_string,
    {{0, "auto"},
     {1, "auto max 2 Gbps"},
     {2, "auto max 4 Gbps"},
     {10, "10 Mbps"},
     {100, "100 Mbps"},
     {110, "auto 10 or 100 Mbps"},
     {1000, "1 Gbps"},
     {2000, "2 Gbps"},
     {4000, "4 Gbps"},
     {8000, "8 Gbps"},
     {0xffffffff, "unknown"}},
    [](uint32_t value) { return std::to_string(value / 1000U) + " Gbps"; },
};

inline const writing_function<int32_t> speed_in_gbps{
    "port_speed_string_gbps",
    port_speed_string_gbps,
    {{0, "auto"},
     {1, "auto max 2"},
     {2, "auto max 4"},
     {10, "0.01"},
     {100, "0.1"},
     {110, "0"},
     {1000, "1"},
     {2000, "2"},
     {4000, "4"},
     {8000, "8"},
     {0xffffffff, "--"}},
    [](int32_t value) { return std::to_string(value / 1000); },
};

inline const std::vector<writing_function<int32_t>> written_words{
    speed_in_gbps,
    {"port_bb_credit_string", port_bb_credit_string, {{0, "default"}}, credits},
    {"port_bb_credit_multiplier_string", port_bb_credit_multiplier_string, {{0xffffffff, "default"}}, number},
    {"port_bb_credit_performance_buf_string", port_bb_credit_performance_buf_string, {{0, "default"}}, number},
    {"port_ec_bb_credit_string", port_ec_bb_credit_string, {{0, "default"}}, number},
    {"port_promiscuous_mode_string",
     port_promiscuous_mode_string,
     {{1, "promiscuos mode on"}, {2, "promiscuos mode off"}},
     [](int32_t) { return std::string("promiscuos mode unknown"); }},
    {"port_auto_negotiate_string",
     port_auto_negotiate_string,
     {{1, "auto-negotiate on"}, {2, "auto-negotiate off"}},
     [](int32_t) { return std::string("auto-negotiate unknown"); }},
};

inline const writing_function<uint16_t> buffer_size{
    "port_rxbufsize_string",
    port_rxbufsize_string,
    {},
    [](uint16_t value) { return std::to_string(value); },
};

}  // namespace unit

#endif
