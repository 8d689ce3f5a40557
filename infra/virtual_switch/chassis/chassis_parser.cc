// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include "chassis/chassis_builder.h"
#include "chassis/chassis_error.h"
#include "chassis/chassis_file.h"

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
};

const document_value *find(const document_table &document, std::string_view name) {
    const auto found =
        std::find_if(document.begin(), document.end(), [name](const auto &entry) { return entry.key == name; });
    return found == document.end() ? nullptr : &found->value;
}

void check_names(const document_table &document) {
    std::vector<std::string_view> known{chassis_section};
    for (const file_section &section : repeated_sections) known.push_back(section.name);
    for (const document_entry &entry : document) {
        if (std::find(known.begin(), known.end(), entry.key) != known.end()) continue;
        throw chassis_error(entry.value.line, entry.key, "unknown section" + suggestion(entry.key, known));
    }
}

void add_sections(const document_table &document, const file_section &section, chassis_builder &builder) {
    const document_value *value = find(document, section.name);
    if (value == nullptr) return;
    const auto *tables = std::get_if<document_array>(&value->data);
    if (tables == nullptr) {
        const std::string name(section.name);
        throw chassis_error(value->line, name, "must be written [[" + name + "]]");
    }
    for (const document_value &table : *tables) (builder.*section.add)(table);
}

}  // namespace

chassis_model parse_chassis(std::string_view text) {
    const document_table document = parse_document(text);
    check_names(document);
    const document_value *const chassis = find(document, chassis_section);
    if (chassis == nullptr) throw chassis_error(1, std::string(chassis_section), "is missing");
    chassis_builder builder;
    builder.set_chassis(*chassis);
    for (const file_section &section : repeated_sections) add_sections(document, section, builder);
    return builder.finish();
}

}  // namespace virtual_switch
