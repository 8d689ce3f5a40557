// SPDX-License-Identifier: Apache-2.0
#include "message_layout.h"

#include "port_mgr/opcodes.h"
#include "port_mgr/port_info_request.h"

#define NAMED(constant) constant, #constant

namespace dissector {
namespace {

using enum piece_kind;

using piece_list = std::vector<message_piece>;

piece_list ranges_behind(std::string_view request) {
    return {{record, request}, {records, "if_index_range", "range_count"}};
}

piece_list counted(std::string_view name) {
    return {{record, "answer"}, {record, "record_count"}, {records, name, "count"}};
}

piece_list ports() {
    piece_list pieces = counted("port_info");
    pieces.push_back({elements, "port_attributes"});
    return pieces;
}

const piece_list port_selection{{record, "port_info_request"},
                                {records, "if_index_range", "range_count", "mode", PM_PORT_INFO_MODE_RANGES}};

}  // namespace

std::vector<message_layout> message_layouts() {
    return {
        {NAMED(MTS_OPC_PM_GET_PORT_INFO), port_selection, ports()},
        {NAMED(MTS_OPC_PM_GET_NEXT_PORT_INFO), {{record, "interface_index"}}, ports()},
        {NAMED(MTS_OPC_PM_GET_PORT_INFO_BRIEF), port_selection, counted("port_info_brief")},
        {NAMED(MTS_OPC_PM_GET_IF_INDEX_LISTING), {{record, "listing_request"}}, counted("interface_index")},
        {NAMED(MTS_OPC_PM_GET_STARTUP_IF_INDEX_LISTING),
         {{record, "startup_listing_request"}},
         counted("interface_index")},
        {NAMED(MTS_OPC_GET_SFP_DIAG_INFO),
         {{record, "interface_index"}},
         {{record, "sfp_element"}, {record, "sfp_diag_info"}, {aligned_elements, "sfp_elements"}}},
        {NAMED(MTS_OPC_PM_GET_CLEAR_ETH_STATS), {{record, "eth_stats_request"}}, {{record, "eth_stats"}}},
        {NAMED(MTS_OPC_PM_GET_MODULE_RESOURCES), ranges_behind("module_resources_request"), counted("module_resource")},
        {NAMED(CMI_OPC_GET_CHANNEL_MEMBER), {{record, "channel_member_query"}}, {{record, "interface_index"}}},
        {NAMED(CMI_OPC_PM_SET_PORT_CONFIG),
         {{record, "set_request"}, {records, "if_index_range", "range_count"}, {attribute, "config"}},
         counted("set_port_result")},
        {NAMED(CMI_OPC_PM_GET_PORT_CONFIG), port_selection, ports()},
        {NAMED(CMI_OPC_PM_GET_FCOT_INFO), ranges_behind("fcot_request"), counted("fcot_info")},
        {NAMED(CMI_OPC_PM_CONFIG_SUB_INTF),
         {{record, "config_sub_intf_req"}, {records, "sub_intf_entry", "entry_count"}},
         {{record, "sub_intf_answer"}}},
        {NAMED(CMI_OPC_PM_GET_MODULE_INTF_LISTING), {{record, "module_listing_request"}}, ports()},
        {NAMED(CMI_OPC_PM_CONFIG_LOOPBACK), ranges_behind("loopback_request"), {}},
    };
}

}  // namespace dissector
