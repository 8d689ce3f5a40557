// SPDX-License-Identifier: Apache-2.0
#include "wire_element.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>

#include "port_mgr/config_attribute.h"
#include "presentation.h"
#include "protocol/config_value_kinds.h"
#include "protocol/member_names.h"
#include "protocol/port_info_layout.h"
#include "protocol/sfp_diagnostics_layout.h"

namespace dissector {
namespace {

using std::string_view_literals::operator""sv;

struct element_part {
    size_t at;
    size_t width;
};

// Which bytes of its element an attribute is taken from.
std::optional<element_part> part_of(pm::attribute_kind kind) {
    constexpr size_t at = pm::attribute_offset;
    switch (kind) {
        case pm::attribute_kind::number:
        case pm::attribute_kind::number_held:
        case pm::attribute_kind::raw:
            return element_part{at, 4};
        case pm::attribute_kind::number_to_16:
        case pm::attribute_kind::number_to_16_and_held:
            return element_part{at + 2, 2};
        case pm::attribute_kind::number_to_8:
            return element_part{at + 3, 1};
        case pm::attribute_kind::first_byte:
        case pm::attribute_kind::first_byte_to_32:
            return element_part{at, 1};
        case pm::attribute_kind::text:
            return element_part{0, pm::owner_text_size};
        case pm::attribute_kind::ignored:
        case pm::attribute_kind::unknown:
            break;
    }
    return std::nullopt;
}

// Texts carry no index.
wire_element element_of(const pm::port_attribute &attribute) {
    wire_element element{attribute.type, "port_info", {}};
    if (attribute.kind != pm::attribute_kind::text) element.fields.push_back({"if_index", 0, 4, 1, "if_index"});
    const auto part = part_of(attribute.kind);
    if (!part) return element;
    const auto member = std::ranges::find_if(pm::port_info_members, [&](const pm::member_name &at) {
        return attribute.member >= at.offset && attribute.member < at.offset + at.size;
    });
    const presentation shown = presentation_of(member->name);
    const bool is_text = attribute.kind == pm::attribute_kind::text;
    element.fields.push_back({member->name, part->at, part->width, 1, is_text ? "text" : "number", shown.texts});
    return element;
}

struct attribute_name {
    uint8_t number;
    std::string_view constant;
    std::string_view texts;
};

#define NAMED(constant, texts) \
    attribute_name { constant, #constant, texts }
constexpr auto attribute_names = std::to_array({
    NAMED(PM_ATTR_ADMIN_STATE, "port_state"),
    NAMED(PM_ATTR_PORT_MODE, "port_mode"),
    NAMED(PM_ATTR_SPEED, "speed"),
    NAMED(PM_ATTR_TRUNK_MODE, "trunk_mode"),
    NAMED(PM_ATTR_BEACON_MODE, "on_off"),
    NAMED(PM_ATTR_DESCRIPTION, ""),
    NAMED(PM_ATTR_RX_BUF_SIZE, ""),
    NAMED(PM_ATTR_RX_BB_CREDIT, ""),
    NAMED(PM_ATTR_RATE_MODE, "rate_mode"),
    NAMED(PM_ATTR_PORT_VSAN, ""),
    NAMED(PM_ATTR_DUPLEX, "duplex"),
    NAMED(PM_ATTR_AUTO_NEG, "on_off"),
    NAMED(PM_ATTR_MTU, ""),
    NAMED(PM_ATTR_BANDWIDTH, ""),
    NAMED(PM_ATTR_DOWN_ON_LINK_FAILURE, "down_on_link_failure"),
});
#undef NAMED

wire_field value_of_kind(pm::value_kind kind) {
    switch (kind) {
        case pm::value_kind::raw_word:
            return {"", 0, 4, 1, "host_number"};
        case pm::value_kind::raw_pair:
            return {"", 0, 4, 2, "host_number"};
        case pm::value_kind::text:
            return {"", 0, PM_CFG_VALUE_SIZE, 1, "text"};
        case pm::value_kind::byte:
        case pm::value_kind::short_number:
        case pm::value_kind::word:
        case pm::value_kind::none:
            break;
    }
    return {"", 0, pm::width_of(kind)};
}

// "admin_state" of "PM_ATTR_ADMIN_STATE".
std::string field_name(std::string_view constant) {
    std::string name(constant.substr("PM_ATTR_"sv.size()));
    std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return name;
}

}  // namespace

std::vector<wire_element> port_attribute_elements() {
    std::vector<wire_element> elements;
    for (const pm::port_attribute &attribute : pm::port_attributes) elements.push_back(element_of(attribute));
    return elements;
}

std::vector<wire_element> sfp_elements() {
    wire_element extra{pm::sfp_extra_element, "sfp_diag_extra", {}};
    for (const auto &[offset, size, name] : pm::sfp_diag_extra_members) extra.fields.push_back({name, offset, size});
    return {{pm::sfp_ignored_element, "sfp_diag_extra", {{"if_index", 0, 4, 1, "if_index"}}}, std::move(extra)};
}

std::vector<config_attribute> config_attributes() {
    std::vector<config_attribute> attributes;
    for (unsigned number = 0; number <= UINT8_MAX; ++number) {
        const auto attribute = static_cast<uint8_t>(number);
        const pm::value_kind kind = pm::written_kind(attribute);
        if (kind == pm::value_kind::none) continue;
        wire_field value = value_of_kind(kind);
        const auto named = std::ranges::find(attribute_names, attribute, &attribute_name::number);
        const bool is_named = named != attribute_names.end();
        value.name = is_named ? field_name(named->constant) : "attribute_" + std::to_string(number);
        if (is_named) value.texts = named->texts;
        attributes.push_back({attribute, is_named ? std::string(named->constant) : value.name, std::move(value)});
    }
    return attributes;
}

}  // namespace dissector
