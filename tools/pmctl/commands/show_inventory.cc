// SPDX-License-Identifier: Apache-2.0
#include "commands/show_inventory.h"

#include <cmath>

#include <fmt/core.h>

#include "command_line/argument_check.h"
#include "commands/asked_ports.h"
#include "output/json_text.h"
#include "switch/interface_names.h"
#include "switch/interface_types.h"
#include "switch/switch_inventory.h"

namespace pmctl {
namespace {

std::vector<uint8_t> asked_types(const arguments &given) {
    if (given.has("--type")) return {parse_type(given.word("--type"))};
    return listed_types();
}

std::vector<if_index_t> listed_interfaces(const arguments &given, std::vector<std::string> &failures) {
    std::vector<if_index_t> interfaces;
    attempt(failures, [&] {
        switch_inventory inventory;
        const auto list = [&](uint8_t type) {
            const std::vector<if_index_t> more = inventory.interfaces_of_type(type);
            interfaces.insert(interfaces.end(), more.begin(), more.end());
        };
        for (const uint8_t type : asked_types(given))
            if (!attempt(failures, [&] { list(type); })) break;
    });
    return interfaces;
}

sheet index_table(const std::vector<if_index_t> &interfaces) {
    sheet table{"", {"Interface", "Index", "Type"}, {}};
    for (const if_index_t index : interfaces)
        table.rows.push_back(
            {{interface_name(index)}, {fmt::format("{:#010x}", index)}, {type_word(interface_type(index))}});
    return table;
}

std::vector<json_fields> index_objects(const std::vector<if_index_t> &interfaces) {
    std::vector<json_fields> objects;
    for (const if_index_t index : interfaces)
        objects.push_back({{"if_index", index},
                           {"name", interface_name(index)},
                           {"type", uint32_t{interface_type(index)}},
                           {"type_text", type_word(interface_type(index))}});
    return objects;
}

std::string resource_text(uint16_t resource) {
    switch (resource) {
        case PM_RESOURCE_PORTS:
            return "ports";
        case PM_RESOURCE_BB_CREDITS:
            return "BB credits";
        case PM_RESOURCE_BANDWIDTH:
            return "bandwidth (Mbit/s)";
        case PM_RESOURCE_SUB_INTERFACES:
            return "sub-interfaces";
        default:
            return fmt::format("resource {}", resource);
    }
}

// To a tenth; nothing when there is nothing that could be used.
std::optional<double> percent(const pm_module_resource_t &of) {
    if (of.total == 0) return std::nullopt;
    return std::round(1000.0 * of.used / of.total) / 10;
}

sheet resource_table(const std::vector<pm_module_resource_t> &resources) {
    sheet table{"", {"Module", "Resource", "Total", "Used", "%"}, {}};
    for (const pm_module_resource_t &each : resources) {
        const std::optional<double> used = percent(each);
        table.rows.push_back({{std::to_string(each.module)},
                              {resource_text(each.resource)},
                              {std::to_string(each.total)},
                              {std::to_string(each.used)},
                              {used ? fmt::format("{:.1f}", *used) : std::string(absent_text)}});
    }
    return table;
}

std::vector<json_fields> resource_objects(const std::vector<pm_module_resource_t> &resources) {
    std::vector<json_fields> objects;
    for (const pm_module_resource_t &each : resources) {
        const std::optional<double> used = percent(each);
        objects.push_back({{"module", uint32_t{each.module}},
                           {"resource", uint32_t{each.resource}},
                           {"resource_text", resource_text(each.resource)},
                           {"total", uint32_t{each.total}},
                           {"used", uint32_t{each.used}},
                           {"percent", used ? json_value(*used) : json_value(nullptr)}});
    }
    return objects;
}

}  // namespace

command_result run_show_index(const arguments &given) {
    command_result result;
    const std::vector<if_index_t> interfaces = listed_interfaces(given, result.failures);
    if (given.has("--json"))
        result.output.text = json_text("interfaces", index_objects(interfaces));
    else
        result.output.sheets.push_back(index_table(interfaces));
    return result;
}

command_result run_show_resources(const arguments &given) {
    command_result result;
    const uint8_t module = given.has("N") ? parse_module(given.word("N")) : uint8_t{0};
    std::vector<pm_module_resource_t> resources;
    attempt(result.failures, [&] { resources = switch_inventory().resources(module); });
    if (given.has("--json"))
        result.output.text = json_text("resources", resource_objects(resources));
    else
        result.output.sheets.push_back(resource_table(resources));
    return result;
}

}  // namespace pmctl
