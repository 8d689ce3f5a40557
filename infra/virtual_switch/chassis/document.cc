// SPDX-License-Identifier: Apache-2.0
#include "chassis/document.h"

#include <algorithm>
#include <array>

#define TOML_HEADER_ONLY 1
#define TOML_ASSERT(condition) static_assert(true)  // some hold for good files alone; of bad ones it tells afterwards
#include <toml++/toml.h>

#include "chassis/chassis_error.h"

namespace virtual_switch {
namespace {

document_value convert(const toml::node &node);

document_table convert(const toml::table &table) {
    document_table entries;
    for (const auto &[key, node] : table) {
        document_entry entry{std::string(key.str()), convert(node)};
        entry.value.line = key.source().begin.line;
        entries.push_back(std::move(entry));
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto &a, const auto &b) { return a.value.line < b.value.line; });
    return entries;
}

document_array convert(const toml::array &array) {
    document_array values;
    for (const toml::node &node : array) values.push_back(convert(node));
    return values;
}

document_value convert(const toml::node &node) {
    const unsigned line = node.source().begin.line;
    if (const auto *number = node.as_integer()) return {line, number->get()};
    if (const auto *number = node.as_floating_point()) return {line, number->get()};
    if (const auto *text = node.as_string()) return {line, text->get()};
    if (const auto *array = node.as_array()) return {line, convert(*array)};
    if (const auto *table = node.as_table()) return {line, convert(*table)};
    if (node.is_boolean()) return {line, foreign_value{"true or false"}};
    return {line, foreign_value{"a date or time"}};
}

// Tables as deep as a key has parts would overflow the stack. A list of names is the line with the most dots that a
// file can need.
void check_dots(std::string_view text) {
    constexpr unsigned most = 1024;
    unsigned line = 1;
    unsigned dots = 0;
    for (const char character : text) {
        if (character == '.' && ++dots > most) {
            throw chassis_error(line, "TOML", "more than " + std::to_string(most) + " dots in one line");
        }
        if (character != '\n') continue;
        ++line;
        dots = 0;
    }
}

}  // namespace

std::string_view document_value::type_name() const {
    if (const auto *foreign = std::get_if<foreign_value>(&data)) return foreign->type_name;
    constexpr std::array<std::string_view, 5> names{"a number", "a number with a fraction", "a text", "an array",
                                                    "a table"};
    return names.at(data.index());
}

document_table parse_document(std::string_view text) {
    check_dots(text);
    try {
        return convert(static_cast<const toml::table &>(toml::parse(text)));
    } catch (const toml::parse_error &error) {
        throw chassis_error(error.source().begin.line, "TOML", std::string(error.description()));
    }
}

}  // namespace virtual_switch
