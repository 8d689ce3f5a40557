// SPDX-License-Identifier: Apache-2.0
// port_string_tables.h: the values of a port's attributes that have texts of their own.
#ifndef PM_API_COMMON_PORT_STRING_TABLES_H
#define PM_API_COMMON_PORT_STRING_TABLES_H

#include <cstdint>

#include "pm_api_common/value_text.h"

namespace pm {

template <typename Value>
inline constexpr value_text<Value> on_off[] = {{1, "on"}, {2, "off"}};

inline constexpr value_text<int32_t> port_modes[] = {
    {0xffff, "ALL"},
    {0xfffb, "Not E"},
    {0xfe3f, "Not FL"},
    {0x60, "FX"},
    {0x1, "auto"},
    {0x2, "SD"},
    {0x8000, "ST"},
    {0x4, "E"},
    {0x8, "TE"},
    {0x10, "TL"},
    {0x20, "F"},
    {0x40, "FL"},
    {0x80, "FL"},
    {0x100, "FL"},
    {0x200, "IPS"},
    {0x400, "ISCSI"},
    {0x80000, "FA"},
    {0x4000, "NP"},
    {0x100000, "trunk"},
    {0x400000, "private-vlan host"},
    {0x800000, "private-vlan promiscuous"},
    {0x8000000, "TNP"},
    {0x4000000, "TF"},
};

inline constexpr value_text<int32_t> service_states[] = {{0, "in service"}, {1, "out of service"}};
inline constexpr value_text<int32_t> port_types[] = {{1, "external"}, {2, "internal"}, {3, "hidden"}};
inline constexpr value_text<uint8_t> rate_modes[] = {{1, "dedicated"}, {2, "shared"}};
inline constexpr value_text<uint8_t> ignore_params[] = {{1, "bit error on"}, {2, "bit error off"}};
inline constexpr value_text<uint8_t> trunking_modes[] = {{1, "off"}, {2, "on"}, {3, "auto"}};
inline constexpr value_text<int32_t> down_on_link_failure_settings[] = {{3, "enabled"}, {4, "disabled"}};

inline constexpr value_text<uint8_t> port_states[] = {
    {255, "all"}, {1, "up"}, {16, "down"}, {2, "down"}, {8, "trunking"}, {4, "testing"},
};
inline constexpr value_text<uint8_t> duplex_modes[] = {{1, "Half"}, {2, "Full"}, {3, "Auto"}};
inline constexpr value_text<uint8_t> phy_layers[] = {
    {1, "FC"}, {2, "ethernet"}, {3, "FC virtual"}, {4, "Inband"}, {5, "EOBC"}, {6, "Management"},
};
inline constexpr value_text<uint8_t> encaps[] = {{1, "normal"}, {2, "eisl"}, {3, "internal"}};
inline constexpr value_text<uint16_t> flowctrl_modes[] = {{1, "on"}, {2, "on"}, {4, "desired"}, {8, "desired"}};
inline constexpr value_text<int32_t> track_modes[] = {{0, "operationally-bound"}, {1, "force_shut"}};
inline constexpr value_text<int32_t> delayed_trap_states[] = {{1, "disabled"}, {2, "FX"}};

inline constexpr value_text<uint32_t> speeds[] = {
    {0, "auto"},      {1, "auto max 2 Gbps"},  {2, "auto max 4 Gbps"},
    {10, "10 Mbps"},  {100, "100 Mbps"},       {110, "auto 10 or 100 Mbps"},
    {1000, "1 Gbps"}, {2000, "2 Gbps"},        {4000, "4 Gbps"},
    {8000, "8 Gbps"}, {UINT32_MAX, "unknown"},
};

inline constexpr value_text<int32_t> speeds_gbps[] = {
    {0, "auto"}, {1, "auto max 2"}, {2, "auto max 4"}, {10, "0.01"}, {100, "0.1"},
    {1000, "1"}, {2000, "2"},       {4000, "4"},       {-1, "--"},
};

}  // namespace pm

#endif
