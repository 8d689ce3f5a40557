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
#include "chassis/transceiver_keys.h"
#include "names.h"
#include "sff8472/code_names.h"
#include "sff8472/identification.h"

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

sff8472::readings readings_of(const chassis_model &model, const char *name, int seconds) {
    const virtual_switch::transceiver *const at = model.plugged_into(index_of(name));
    const auto page = diagnostics_at(*at, index_of(name), {true, true}, std::chrono::seconds(seconds));
    return sff8472::read_diagnostics(page, at->is_externally_calibrated());
}

TEST(director, has_many_transceivers) {
    const chassis_model model = load("director.toml");
    std::set<std::string> parts;
    std::set<std::string> technologies;
    std::set<std::string> numbers;
    size_t plugged_in = 0;
    for (const auto &[if_index, at] : model.ports) {
        const virtual_switch::transceiver *const found = model.plugged_into(if_index);
        if (found == nullptr) continue;
        ++plugged_in;
        const sff8472::identification id = sff8472::identify(found->serial_id);
        EXPECT_TRUE(id.checksums_are_right);
        parts.insert(id.part_number);
        technologies.insert(id.technology);
        numbers.insert(id.serial_number);
    }
    EXPECT_EQ(plugged_in, 48u + 48 + 4 + 36);
    EXPECT_EQ(numbers.size(), plugged_in);
    EXPECT_THAT(parts, testing::ElementsAre("IO-10G-LR", "IO-10G-SR", "IO-1G-T", "IO-FC16-LW", "IO-FC8-DW-5012",
                                            "IO-FC8-SW", "SC-SFP-10G-3M", "SP-10GSR-85"));
    EXPECT_THAT(technologies, testing::ElementsAre("1000BASE-T", "10GBASE-LR", "10GBASE-SR", "long wave laser",
                                                   "passive copper cable", "short wave laser"));
}

TEST(director, has_transceivers_that_raise_alarms) {
    const chassis_model model = load("director.toml");
    using sff8472::level;
    using sff8472::quantity;
    EXPECT_EQ(level_of(flags_of(readings_of(model, "fc1/30", 0)), quantity::bias), level::high_alarm);
    std::set<level> levels;
    for (int seconds = 0; seconds < 600; ++seconds)
        levels.insert(level_of(flags_of(readings_of(model, "fc1/17", seconds)), quantity::rx_power));
    EXPECT_THAT(levels, testing::ElementsAre(level::normal, level::low_warning, level::low_alarm));
}

TEST(director, has_a_transceiver_that_the_host_calibrates_from_a_dump) {
    const chassis_model model = load("director.toml");
    const virtual_switch::transceiver *const dwdm = model.plugged_into(index_of("fc2/25"));
    EXPECT_TRUE(dwdm->is_externally_calibrated());
    EXPECT_EQ(sff8472::identify(dwdm->serial_id).wavelength, 155012u);
    EXPECT_EQ(sff8472::identify(dwdm->serial_id).serial_number, "IOD23410077");
    const sff8472::readings readings = readings_of(model, "fc2/25", 0);
    EXPECT_NEAR(readings[1].value, 32800, 1);
    EXPECT_NEAR(readings[2].value, 62 * 500, 1);
    EXPECT_NEAR(readings[3].value, 16218, 1);
    EXPECT_EQ(level_of(flags_of(readings), sff8472::quantity::rx_power), sff8472::level::normal);
}

TEST(fixed, has_transceivers_of_both_media) {
    const chassis_model model = load("fixed.toml");
    const auto part = [&](const char *name) {
        return sff8472::identify(model.plugged_into(index_of(name))->serial_id).part_number;
    };
    EXPECT_EQ(part("fc1/2"), "IO-FC8-LW");
    EXPECT_EQ(part("fc1/3"), "IO-FC8-SW");
    EXPECT_EQ(part("Ethernet2/1"), "IO-SFP-10G-1M");
    EXPECT_EQ(model.plugged_into(index_of("fc1/9")), nullptr);
}

TEST(chassis_document, names_every_word_of_transceivers) {
    std::ifstream file(source_folder + "/docs/chassis-file.md");
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    const auto expect_word = [&](std::string_view word) {
        EXPECT_THAT(document, testing::HasSubstr("`\"" + std::string(word) + "\"`"));
    };
    for (const auto &known : sff8472::identifiers) expect_word(known.name);
    for (const auto &known : sff8472::connectors) expect_word(known.name);
    for (const auto &known : sff8472::technologies) expect_word(known.name);
}

TEST(chassis_document, names_every_key_and_kind_of_module) {
    std::ifstream file(source_folder + "/docs/chassis-file.md");
    const std::string document{std::istreambuf_iterator<char>(file), {}};
    for (const std::string_view key : virtual_switch::port_setting_keys())
        EXPECT_THAT(document, testing::HasSubstr("| `" + std::string(key) + "` |"));
    for (const std::string_view key : virtual_switch::counter_keys)
        EXPECT_THAT(document, testing::ContainsRegex("`" + std::string(key) + "[` ]"));
    std::vector<std::string_view> keys(virtual_switch::transceiver_keys().begin(),
                                       virtual_switch::transceiver_keys().end());
    keys.insert(keys.end(), virtual_switch::reading_keys.begin(), virtual_switch::reading_keys.end());
    for (const std::string_view key : keys)
        EXPECT_THAT(document, testing::HasSubstr("\n| `" + std::string(key) + "` |"));
    for (const auto &kind : virtual_switch::module_kinds)
        EXPECT_THAT(document, testing::HasSubstr("| `\"" + std::string(kind.word) + "\"` |"));
}

}  // namespace
