// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_capabilities.h"

#include "pm_api_common/interface_type.h"

namespace {

constexpr uint8_t xgfc_subtype = 1;

constexpr pm::type_set without_port_mode{IF_TYPE_ETHERNET, IF_TYPE_MGMT, IF_TYPE_SLOT_PORT};
constexpr pm::type_set without_speed{IF_TYPE_ETHERNET, IF_TYPE_SLOT_PORT};

enum class support { no, yes, of_xgfc };

struct type_support {
    uint8_t type;
    support beacon_mode;
    support bb_credit;
};

// Types that are not here have both.
constexpr type_support supports[] = {
    {IF_TYPE_PORT_CHANNEL, support::of_xgfc, support::of_xgfc},
    {IF_TYPE_MGMT, support::no, support::no},
    {IF_TYPE_FCIP, support::no, support::no},
    {IF_TYPE_SLOT_PORT, support::no, support::no},
    {IF_TYPE_OTHER, support::yes, support::no},
};

int32_t is_supported(if_index_t if_index, support type_support::*attribute) {
    const uint8_t type = pm::type_of(if_index);
    for (const type_support &row : supports) {
        if (row.type != type) continue;
        if (row.*attribute == support::of_xgfc) return pm_is_xgfc_interface(if_index);
        return row.*attribute == support::yes;
    }
    return 1;
}

}  // namespace

uint32_t pm_map_snmp_error_code(uint32_t status) { return status; }

int32_t pm_is_xgfc_interface(if_index_t if_index) {
    uint8_t type;
    if (if_index_get_type(if_index, &type) != 0 || type != IF_TYPE_PORT_CHANNEL) return 0;
    uint8_t subtype;
    if (if_index_port_channel_get_subtype(if_index, &subtype) != 0) return 0;
    return subtype == xgfc_subtype;
}

int32_t pm_is_bundle_port_type(if_index_t if_index) {
    uint8_t type;
    if (if_index_get_type(if_index, &type) != 0 || pm_is_xgfc_interface(if_index) != 0) return 0;
    return pm::is_port_channel_type(type);
}

int32_t pm_is_port_mode_supported(uint8_t code) { return !without_port_mode.contains(code); }

int32_t pm_is_trunk_mode_supported(uint8_t code) { return !without_port_mode.contains(code); }

int32_t pm_is_port_speed_supported(uint8_t code) { return !without_speed.contains(code); }

int32_t pm_is_duplex_mode_supported(uint8_t code) { return code == IF_TYPE_MGMT; }

int32_t pm_is_beacon_mode_supported(if_index_t if_index) { return is_supported(if_index, &type_support::beacon_mode); }

int32_t pm_is_bbcredit_supported(if_index_t if_index) { return is_supported(if_index, &type_support::bb_credit); }
