// SPDX-License-Identifier: Apache-2.0
#include "chassis/document_sections.h"

#include <algorithm>

#include "chassis/chassis_error.h"
#include "chassis/value_reader.h"

namespace virtual_switch {

void check_section_names(const document_table &document, std::span<const std::string_view> known) {
    for (const document_entry &entry : document) {
        if (std::find(known.begin(), known.end(), entry.key) != known.end()) continue;
        throw chassis_error(entry.value.line, entry.key, "unknown section" + suggestion(entry.key, known));
    }
}

const document_value *find_section(const document_table &document, std::string_view name) {
    const auto found =
        std::find_if(document.begin(), document.end(), [name](const auto &entry) { return entry.key == name; });
    return found == document.end() ? nullptr : &found->value;
}

const document_array &repeated_section(const document_table &document, std::string_view name) {
    static const document_array none;
    const document_value *const value = find_section(document, name);
    if (value == nullptr) return none;
    const auto *const tables = std::get_if<document_array>(&value->data);
    if (tables != nullptr) return *tables;
    throw chassis_error(value->line, std::string(name), "must be written [[" + std::string(name) + "]]");
}

}  // namespace virtual_switch
