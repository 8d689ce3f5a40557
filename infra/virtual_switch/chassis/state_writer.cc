// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstdio>

#include "chassis/chassis_error.h"
#include "chassis/config_attributes.h"
#include "chassis/interface_names.h"
#include "chassis/state_file.h"
#include "chassis/utf8.h"

namespace virtual_switch {
namespace {

constexpr std::string_view heading =
    "# What clients configured, on top of the chassis file. docs/state-file.md describes it.\n";

bool is_loopback(if_index_t if_index) { return !is_sub_interface(if_index); }

std::string last_number(const std::string &name) { return name.substr(name.find_last_not_of("0123456789") + 1); }

// "loopback2-4" for interfaces that follow one another.
std::string names_of(if_index_t first, if_index_t last) {
    return first == last ? name_of(first) : name_of(first) + "-" + last_number(name_of(last));
}

// A section for each run of interfaces that meet the condition.
void append_interfaces(std::string &text, std::string_view section, const std::set<if_index_t> &interfaces,
                       bool (*belongs)(if_index_t)) {
    auto at = interfaces.begin();
    while (at != interfaces.end()) {
        const if_index_t first = *at;
        if_index_t last = first;
        for (++at; at != interfaces.end() && *at == last + 1 && last - first < longest_range - 1; ++at) ++last;
        if (!belongs(first)) continue;
        text.append("\n[[").append(section).append("]]\nname = \"").append(names_of(first, last)).append("\"\n");
    }
}

std::string escaped(char character) {
    if (character == '"' || character == '\\') return {'\\', character};
    if (!is_control(character)) return {character};
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "\\u%04X", static_cast<unsigned char>(character));
    return text.data();
}

std::string quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) quoted += escaped(character);
    return quoted + "\"";
}

std::string byte_array(std::string_view text) {
    std::string bytes;
    for (const char character : text) {
        bytes += (bytes.empty() ? "[" : ", ") + std::to_string(static_cast<unsigned char>(character));
    }
    return bytes + "]";
}

// A text that is not UTF-8 cannot stand in a file, but its bytes can.
std::string text_of(const port_setting &setting, const setting_value &value) {
    if (const auto *text = std::get_if<std::string>(&value)) return is_utf8(*text) ? quoted(*text) : byte_array(*text);
    const uint32_t number = std::get<uint32_t>(value);
    const std::optional<std::string_view> word = word_of(setting, number);
    return word ? quoted(*word) : std::to_string(number);
}

void append_settings(std::string &text, if_index_t if_index, const attribute_values &values) {
    text.append("\n[[ports]]\nname = \"").append(name_of(if_index)).append("\"\n");
    for (const config_attribute &attribute : config_attributes) {
        const auto value = values.find(attribute.number);
        if (value == values.end()) continue;
        text.append(attribute.setting->key).append(" = ").append(text_of(*attribute.setting, value->second));
        text.append("\n");
    }
}

}  // namespace

std::string state_text(const configuration &changes) {
    std::string text(heading);
    append_interfaces(text, "interface", changes.created, is_loopback);
    append_interfaces(text, "sub_interface", changes.created, is_sub_interface);
    append_interfaces(text, "deleted", changes.deleted, [](if_index_t) { return true; });
    for (const auto &[if_index, values] : changes.settings) append_settings(text, if_index, values);
    return text;
}

}  // namespace virtual_switch
