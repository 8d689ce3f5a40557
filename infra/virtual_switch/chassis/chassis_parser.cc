// SPDX-License-Identifier: Apache-2.0
#include <array>

#include "chassis/chassis_builder.h"
#include "chassis/chassis_error.h"
#include "chassis/chassis_file.h"
#include "chassis/document_sections.h"

namespace virtual_switch {
namespace {

struct file_section {
    std::string_view name;
    void (chassis_builder::*add)(const document_value &);
};

constexpr std::string_view chassis_section = "chassis";

// Arrays of tables, in the order in which they are taken wherever they stand in the file.
constexpr std::array repeated_sections{
    file_section{"module", &chassis_builder::add_module},
    file_section{"interface", &chassis_builder::add_interfaces},
    file_section{"fcip", &chassis_builder::add_fcip},
    file_section{"port_channel", &chassis_builder::add_port_channel},
    file_section{"sub_interface", &chassis_builder::add_sub_interfaces},
    file_section{"ports", &chassis_builder::override_ports},
    file_section{"counters", &chassis_builder::set_counters},
    file_section{"transceiver", &chassis_builder::add_transceivers},
};

std::vector<std::string_view> section_names() {
    std::vector<std::string_view> names{chassis_section};
    for (const file_section &section : repeated_sections) names.push_back(section.name);
    return names;
}

}  // namespace

chassis_model parse_chassis(std::string_view text, const std::string &folder) {
    const document_table document = parse_document(text);
    check_section_names(document, section_names());
    const document_value *const chassis = find_section(document, chassis_section);
    if (chassis == nullptr) throw chassis_error(1, std::string(chassis_section), "is missing");
    chassis_builder builder(folder);
    builder.set_chassis(*chassis);
    for (const file_section &section : repeated_sections) {
        for (const document_value &table : repeated_section(document, section.name)) (builder.*section.add)(table);
    }
    return builder.finish();
}

}  // namespace virtual_switch
