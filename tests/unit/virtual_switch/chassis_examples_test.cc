// SPDX-License-Identifier: Apache-2.0
// The example chassis, and the document that goes with them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

#include "chassis/chassis_file.h"
#include "chassis/module_kind.h"
#include "chassis/port_settings.h"
#include "names.h"

namespace {

using virtual_switch::chassis_model;
using virtual_switch::port;
using virtual_switch::port_kind;

const std::string source_folder = SOURCE_FOLDER;

chassis_model load(const char *name) {
    return virtual_switch::load_chassis(source_folder + "/examples/chassis/" + name);
}

size_t count_of(const chassis_model &model, port_kind kind) {
    return static_cast<size_t>(std::count_if(model.ports.begin(), model.ports.end(),
                                             [kind](const auto &at) { return at.second.kind == kind; }));
}

// Some port has something other than 0 in these bytes of its record, and meets the condition.
bool some_port_has(const chassis_model &model, size_t offset, size_t size, auto condition) {
    return std::any_of(model.ports.begin(), model.ports.end(), [&](const auto &at) {
        const auto *const bytes = reinterpret_cast<const uint8_t *>(&at.second.info) + offset;
        return condition(at.second) && std::any_of(bytes, bytes + size, [](uint8_t byte) { return byte != 0; });
    });
}

TEST(director, has_the_modules_and_interfaces_of_a_director) {
    const chassis_model model = load("director.toml");
    EXPECT_EQ(model.chassis_type, 6u);
    EXPECT_EQ(model.slot_count, 9);
    EXPECT_EQ(model.line_cards.size(), 5u);
    EXPECT_EQ(count_of(model, port_kind::fc), 144u);
    EXPECT_EQ(count_of(model, port_kind::ethernet), 48u);
    EXPECT_EQ(count_of(model, port_kind::fcip), 3u);
    EXPECT_EQ(count_of(model, port_kind::ethernet_channel), 1u);
    EXPECT_EQ(count_of(model, port_kind::fc_channel), 4u);
    EXPECT_EQ(count_of(model, port_kind::sub_interface), 5u);
}

size_t element_size(pm::field_kind kind) {
    if (kind == pm::field_kind::bytes) return 1;
    return kind == pm::field_kind::u16 ? 2 : 4;
}

TEST(director, has_every_member_of_the_base_record_on_some_port) {
    const chassis_model model = load("director.toml");
    const auto any_port = [](const port &) { return true; };
    for (const pm::record_field &field : pm::base_record_fields) {
        // Bytes belong together, numbers stand alone.
        const bool is_bytes = field.kind == pm::field_kind::bytes;
        const size_t size = is_bytes ? field.count : element_size(field.kind);
        for (size_t i = 0; i < (is_bytes ? 1 : field.count); ++i)
            EXPECT_TRUE(some_port_has(model, field.member + i * size, size, any_port))
                << field.wire << " [" << i << "]";
    }
}

size_t size_of(pm::attribute_kind kind) {
    switch (kind) {
        case pm::attribute_kind::number_to_16:
        case pm::attribute_kind::number_to_16_and_held:
            return 2;
        case pm::attribute_kind::number_to_8:
        case pm::attribute_kind::first_byte:
            return 1;
        default:
            return 4;
    }
}

TEST(director, has_every_attribute_on_a_port_that_sends_it) {
    const chassis_model model = load("director.toml");
    for (const pm::port_attribute &attribute : pm::port_attributes) {
        const auto sends_it = [&](const port &at) { return traits_of(at.kind).attributes.test(attribute.type); };
        EXPECT_TRUE(some_port_has(model, attribute.member, size_of(attribute.kind), sends_it)) << attribute.type;
    }
}

TEST(director, has_ports_in_many_states) {
    const chassis_model model = load("director.toml");
    std::set<uint8_t> states;
    std::set<uint8_t> reasons;
    std::set<uint32_t> modes;
    for (const auto &[if_index, at] : model.ports) {
        states.insert(at.info.oper_state);
        reasons.insert(at.info.state_reason);
        modes.insert(at.info.admin_mode);
    }
    EXPECT_THAT(states, testing::ElementsAre(1, 2, 4, 8));
    EXPECT_THAT(reasons, testing::IsSupersetOf({2, 7, 10, 12, 19, 26, 29, 43, 49, 79, 83, 122}));
    EXPECT_THAT(modes, testing::IsSupersetOf({0x1u, 0x2u, 0x4u, 0x20u, 0x40u, 0x200u, 0x100000u}));
}

TEST(director, has_channels_up_and_down) {
    const chassis_model model = load("director.toml");
    const port *const with_one_member_down = model.find(index_of("port-channel5"));
    EXPECT_TRUE(with_one_member_down->is_up());
    EXPECT_EQ(with_one_member_down->info.oper_speed, 7u * 8000);
    EXPECT_FALSE(model.find(index_of("port-channel12"))->is_up());
    EXPECT_FALSE(model.find(index_of("port-channel99"))->is_up());
    EXPECT_TRUE(model.find(index_of("port-channel20.30"))->is_up());
}

TEST(director, has_interfaces_of_each_kind_that_count) {
    const chassis_model model = load("director.toml");
    std::set<port_kind> counting;
    for (const auto &[if_index, settings] : model.counting) {
        const port &at = *model.find(if_index);
        if (at.is_up() && settings.rates[0] != 0) counting.insert(at.kind);
    }
    EXPECT_THAT(counting, testing::ElementsAre(port_kind::ethernet, port_kind::ips, port_kind::fcip));
    EXPECT_TRUE(model.counting.at(index_of("Ethernet4/14")).unreachable);
    EXPECT_FALSE(model.counting.at(index_of("Ethernet4/13")).unreachable);
}

TEST(fixed, has_the_ports_and_channels_of_a_fixed_switch) {
    const chassis_model model = load("fixed.toml");
    EXPECT_EQ(model.chassis_type, 10u);
    EXPECT_EQ(model.slot_count, 2);
    EXPECT_EQ(count_of(model, port_kind::fc), 16u);
    EXPECT_EQ(count_of(model, port_kind::ethernet), 8u);
    EXPECT_EQ(model.members.size(), 2u);
}

TEST(chassis_document, names_every_key_and_kind_of_module) {
    std::ifstream file(source_folder + "/docs/chassis-file.md");
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    for (const std::string_view key : virtual_switch::port_setting_keys())
        EXPECT_THAT(document, testing::HasSubstr("| `" + std::string(key) + "` |"));
    for (const std::string_view key : virtual_switch::counter_keys)
        EXPECT_THAT(document, testing::ContainsRegex("`" + std::string(key) + "[` ]"));
    for (const auto &kind : virtual_switch::module_kinds)
        EXPECT_THAT(document, testing::HasSubstr("| `\"" + std::string(kind.word) + "\"` |"));
}

}  // namespace
