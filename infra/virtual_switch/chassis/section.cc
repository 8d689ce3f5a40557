// SPDX-License-Identifier: Apache-2.0
#include "chassis/section.h"

#include <algorithm>

#include "chassis/chassis_error.h"
#include "chassis/interface_names.h"
#include "chassis/port_settings.h"

namespace virtual_switch {
namespace {

const document_table &table_of(const document_value &value, const std::string &name) {
    const auto *table = std::get_if<document_table>(&value.data);
    if (table == nullptr) {
        throw chassis_error(value.line, name, "must be a table, not " + std::string(value.type_name()));
    }
    return *table;
}

}  // namespace

section::section(std::string name, const document_value &value, std::initializer_list<std::string_view> keys,
                 std::span<const std::string_view> settings)
    : name_(std::move(name)), line_(value.line), table_(table_of(value, name_)) {
    std::vector<std::string_view> known(keys);
    known.insert(known.end(), settings.begin(), settings.end());
    for (const document_entry &entry : table_) {
        if (std::find(known.begin(), known.end(), entry.key) != known.end()) continue;
        throw chassis_error(entry.value.line, path(entry.key), "unknown key" + suggestion(entry.key, known));
    }
}

const document_value *section::find(std::string_view key) const {
    const auto found =
        std::find_if(table_.begin(), table_.end(), [key](const auto &entry) { return entry.key == key; });
    return found == table_.end() ? nullptr : &found->value;
}

const document_value &section::required(std::string_view key) const {
    const document_value *value = find(key);
    if (value == nullptr) throw chassis_error(line_, path(key), "is missing");
    return *value;
}

uint32_t section::number(std::string_view key, number_range range) const {
    return read_number(required(key), path(key), range);
}

const std::string &section::text(std::string_view key, size_t longest) const {
    return read_text(required(key), path(key), longest);
}

uint32_t section::word(std::string_view key, std::span<const named_value> words) const {
    return read_word(required(key), path(key), words);
}

std::vector<if_index_t> section::interfaces(std::string_view key) const {
    return read_interfaces(required(key), path(key));
}

uint32_t section::number_or(std::string_view key, number_range range, uint32_t otherwise) const {
    return has(key) ? number(key, range) : otherwise;
}

void section::apply_settings(port &to) const {
    for (const document_entry &entry : table_) {
        if (is_port_setting(entry.key)) apply_port_setting(entry, name_, to);
    }
}

void section::fail(std::string_view key, const std::string &what) const {
    const document_value *value = find(key);
    throw chassis_error(value == nullptr ? line_ : value->line, path(key), what);
}

}  // namespace virtual_switch
