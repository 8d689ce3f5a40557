// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "chassis/chassis_error.h"
#include "chassis/config_attributes.h"
#include "chassis/document_sections.h"
#include "chassis/section.h"
#include "chassis/state_file.h"
#include "platform/if_index.h"

namespace virtual_switch {
namespace {

constexpr auto attribute_keys = [] {
    std::array<std::string_view, config_attributes.size()> keys{};
    std::transform(config_attributes.begin(), config_attributes.end(), keys.begin(),
                   [](const auto &attribute) { return attribute.setting->key; });
    return keys;
}();

void add_created(const section &from, if_index_t if_index, configuration &changes) {
    changes.create(if_index);
    if (changes.created.size() <= most_created_interfaces) return;
    from.fail("name", "more than " + std::to_string(most_created_interfaces) + " interfaces are created");
}

void add_interfaces(const document_value &value, configuration &changes) {
    const section from("interface", value, {"name"});
    for (const if_index_t if_index : from.interfaces("name")) {
        if (type_of(if_index) != IF_TYPE_LOOPBACK) from.fail("name", quoted_name(if_index) + " is no loopback");
        add_created(from, if_index, changes);
    }
}

void add_sub_interfaces(const document_value &value, configuration &changes) {
    const section from("sub_interface", value, {"name"});
    for (const if_index_t if_index : from.interfaces("name")) {
        if (!is_sub_interface(if_index)) from.fail("name", quoted_name(if_index) + " is no sub-interface");
        if (has_reserved_number(if_index)) from.fail("name", quoted_name(if_index) + " has a reserved number");
        add_created(from, if_index, changes);
    }
}

void add_deleted(const document_value &value, configuration &changes) {
    const section from("deleted", value, {"name"});
    for (const if_index_t if_index : from.interfaces("name")) {
        if (!is_sub_interface(if_index) && type_of(if_index) != IF_TYPE_LOOPBACK) {
            from.fail("name", quoted_name(if_index) + " is no sub-interface and no loopback");
        }
        changes.deleted.insert(if_index);
    }
}

// A text, or its bytes.
std::string read_characters(const document_value &value, const std::string &key, size_t longest) {
    if (!std::holds_alternative<document_array>(value.data)) {
        const std::string &text = read_any_text(value, key, longest);
        if (text.find('\0') != std::string::npos) throw chassis_error(value.line, key, "holds a NUL character");
        return text;
    }
    std::string text;
    for (const document_value &byte : read_array(value, key, longest)) {
        text.push_back(static_cast<char>(read_number(byte, key, {1, 0xff})));
    }
    return text;
}

setting_value read_value(const port_setting &setting, const document_value &value, const std::string &key) {
    if (setting.kind == setting_kind::text) return read_characters(value, key, setting.size - 1);
    return read_setting(setting, value, key);
}

void add_settings(const document_value &value, configuration &changes) {
    const section from("ports", value, {"name"}, attribute_keys);
    attribute_values values;
    for (const config_attribute &attribute : config_attributes) {
        const port_setting &setting = *attribute.setting;
        const document_value *const given = from.find(setting.key);
        if (given != nullptr) values[attribute.number] = read_value(setting, *given, from.path(setting.key));
    }
    for (const if_index_t if_index : from.interfaces("name")) {
        for (const auto &[attribute, each] : values) changes.settings[if_index][attribute] = each;
    }
}

struct state_section {
    std::string_view name;
    void (*add)(const document_value &value, configuration &changes);
};

constexpr std::array sections{
    state_section{"interface", add_interfaces},
    state_section{"sub_interface", add_sub_interfaces},
    state_section{"deleted", add_deleted},
    state_section{"ports", add_settings},
};

}  // namespace

configuration parse_state(std::string_view text) {
    const document_table document = parse_document(text);
    std::vector<std::string_view> known;
    for (const state_section &section : sections) known.push_back(section.name);
    check_section_names(document, known);
    configuration changes;
    for (const state_section &section : sections) {
        for (const document_value &table : repeated_section(document, section.name)) section.add(table, changes);
    }
    return changes;
}

}  // namespace virtual_switch
