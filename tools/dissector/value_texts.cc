// SPDX-License-Identifier: Apache-2.0
#include "value_texts.h"

#include <algorithm>

#include "pm_api_common/port_state_reason_table.h"
#include "pm_api_common/port_string_tables.h"
#include "port_mgr/ethernet_stats.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/messaging.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/port_config.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "port_mgr/sub_interface_config.h"
#include "protocol/line_card_node.h"
#include "protocol/transceiver_layout.h"

// A constant by its name.
#define NAMED(constant) \
    value_row { constant, #constant }

namespace dissector {
namespace {

// One of the library's tables. Of several rows for a value, the first counts.
template <typename Value, size_t Rows>
value_table texts(std::string_view name, const pm::value_text<Value> (&table)[Rows]) {
    value_table made{name, {}};
    for (const auto &[value, text] : table) {
        const auto number = static_cast<uint32_t>(value);
        if (std::ranges::find(made.rows, number, &value_row::value) == made.rows.end())
            made.rows.push_back({number, text});
    }
    return made;
}

value_table state_reasons() {
    value_table made{"state_reason", {}};
    for (const pm::state_reason &reason : pm::state_reasons) made.rows.push_back({reason.code, reason.message});
    return made;
}

value_table nodes() {
    constexpr uint8_t most_slots = 32;
    value_table made{"node", {{PM_NODE_SUPERVISOR, "supervisor"}}};
    for (uint8_t slot = 0; slot < most_slots; ++slot)
        made.rows.push_back({pm::line_card_node(slot), "line card in slot " + std::to_string(slot + 1)});
    return made;
}

value_table statuses() {
    return {"status",
            {{0, "success"},
             NAMED(PM_ERR_FAILURE),
             NAMED(PM_ERR_INVALID_PARAM),
             NAMED(PM_ERR_TLV),
             NAMED(PM_ERR_NO_PAYLOAD),
             NAMED(PM_ERR_REJECTED),
             NAMED(PM_ERR_INVALID_RANGE)}};
}

value_table saps() {
    return {"sap",
            {NAMED(PM_SAP_CHANNEL_MEMBER), NAMED(PM_SAP_PORT_MANAGER), NAMED(PM_SAP_ETHERNET),
             NAMED(PM_SAP_ETHERNET_CHANNEL), NAMED(PM_SAP_MGMT), NAMED(PM_SAP_SFP_DIAGNOSTICS),
             NAMED(PM_SAP_MODULE_RESOURCE), NAMED(PM_SAP_ETHERNET_STATS)}};
}

}  // namespace

std::vector<value_table> value_tables() {
    constexpr auto plain = static_cast<uint32_t>(pm::fcot_flavour::plain);
    constexpr auto with_diagnostics = static_cast<uint32_t>(pm::fcot_flavour::with_diagnostics);
    return {
        texts("port_mode", pm::port_modes),
        texts("service_state", pm::service_states),
        texts("port_type", pm::port_types),
        texts("rate_mode", pm::rate_modes),
        texts("ignore_param", pm::ignore_params),
        texts("trunk_mode", pm::trunking_modes),
        texts("down_on_link_failure", pm::down_on_link_failure_settings),
        texts("port_state", pm::port_states),
        texts("duplex", pm::duplex_modes),
        texts("phy_layer", pm::phy_layers),
        texts("encap", pm::encaps),
        texts("flowctrl", pm::flowctrl_modes),
        texts("track_mode", pm::track_modes),
        texts("delayed_trap_state", pm::delayed_trap_states),
        texts("speed", pm::speeds),
        texts("on_off", pm::on_off<uint8_t>),
        state_reasons(),
        statuses(),
        saps(),
        nodes(),
        {"selection_mode", {NAMED(PM_PORT_INFO_MODE_RANGES), NAMED(PM_PORT_INFO_MODE_ALL)}},
        {"sub_interface_operation", {NAMED(PM_SUB_INTF_CREATE), NAMED(PM_SUB_INTF_DELETE), NAMED(PM_SUB_INTF_REPLACE)}},
        {"transceiver_flavour", {{plain, "plain"}, {with_diagnostics, "with diagnostics"}}},
        {"transceiver_layout", {NAMED(PM_FCOT_LAYOUT_A), NAMED(PM_FCOT_LAYOUT_B)}},
        {"stats_request_word", {NAMED(PM_ETH_STATS_READ), NAMED(PM_ETH_STATS_CLEAR)}},
        {"resource",
         {NAMED(PM_RESOURCE_PORTS), NAMED(PM_RESOURCE_BB_CREDITS), NAMED(PM_RESOURCE_BANDWIDTH),
          NAMED(PM_RESOURCE_SUB_INTERFACES)}},
    };
}

}  // namespace dissector
