// SPDX-License-Identifier: Apache-2.0
#include "commands/show_capabilities.h"

#include "commands/asked_ports.h"
#include "output/json_text.h"
#include "platform/if_index.h"
#include "port_mgr/port_capabilities.h"
#include "port_mgr/transceiver_kind.h"
#include "switch/interface_names.h"
#include "switch/switch_client.h"

namespace pmctl {
namespace {

// A predicate of the library's about interfaces of a type.
template <int32_t (*Is_supported)(uint8_t)>
int32_t of_type(if_index_t index) {
    return Is_supported(interface_type(index));
}

struct capability {
    const char *title;
    const char *key;
    int32_t (*has)(if_index_t index);
};

constexpr capability capabilities[] = {
    {"Port mode", "port_mode", of_type<pm_is_port_mode_supported>},
    {"Trunk mode", "trunk_mode", of_type<pm_is_trunk_mode_supported>},
    {"Speed", "speed", of_type<pm_is_port_speed_supported>},
    {"Duplex", "duplex", of_type<pm_is_duplex_mode_supported>},
    {"Beacon", "beacon", pm_is_beacon_mode_supported},
    {"BB credit", "bb_credit", pm_is_bbcredit_supported},
    {"Transceiver", "transceiver", pm_is_transceiver_supported},
    {"Bundle", "bundle", pm_is_bundle_port_type},
    {"xgfc", "xgfc", pm_is_xgfc_interface},
};

std::vector<if_index_t> asked_interfaces(const arguments &given, std::vector<std::string> &failures) {
    const std::vector<interface_range> ranges = named_ranges(given);
    if (ranges.empty() && !given.has("--all"))
        throw usage_error("show interface capabilities needs names of interfaces, or --all");
    std::vector<if_index_t> all = members_of(ranges);
    if (given.has("--all")) attempt(failures, [&all] { all = switch_client().interfaces(); });
    return all;
}

sheet table_of(const std::vector<if_index_t> &interfaces) {
    sheet table{"", {"Interface"}, {}};
    for (const capability &column : capabilities) table.header.emplace_back(column.title);
    for (const if_index_t index : interfaces) {
        row &cells = table.rows.emplace_back(row{{interface_name(index)}});
        for (const capability &column : capabilities) cells.push_back({column.has(index) != 0 ? "yes" : "no"});
    }
    return table;
}

std::vector<json_fields> objects_of(const std::vector<if_index_t> &interfaces) {
    std::vector<json_fields> objects;
    for (const if_index_t index : interfaces) {
        json_fields &fields = objects.emplace_back(json_fields{{"if_index", index}, {"name", interface_name(index)}});
        for (const capability &column : capabilities) fields.emplace_back(column.key, column.has(index) != 0);
    }
    return objects;
}

}  // namespace

command_result run_show_capabilities(const arguments &given) {
    command_result result;
    const std::vector<if_index_t> interfaces = asked_interfaces(given, result.failures);
    if (given.has("--json"))
        result.output.text = json_text("interfaces", objects_of(interfaces));
    else
        result.output.sheets.push_back(table_of(interfaces));
    return result;
}

}  // namespace pmctl
