// SPDX-License-Identifier: Apache-2.0
// Which attributes can be set on which kinds of ports, to which values, and what that changes.
#include "chassis/config_attributes.h"

#include <gtest/gtest.h>

#include <cstring>

#include "config_requests.h"
#include "fake_outlets.h"
#include "port_mgr/status.h"

namespace {

using virtual_switch::switch_state;

constexpr const char *fc = "fc1/1";
constexpr const char *ethernet = "Ethernet2/1";

// The value of a setting in a record.
virtual_switch::setting_value value_in(const virtual_switch::port_setting &setting, const pm_port_info_t &info) {
    const auto *const member = reinterpret_cast<const uint8_t *>(&info) + setting.member;
    if (setting.kind == virtual_switch::setting_kind::text) return reinterpret_cast<const char *>(member);
    uint32_t number = 0;
    std::memcpy(&number, member, setting.size);  // on a machine that begins with the low byte
    return number;
}

// A port of each kind, and the attributes that it has: what its running configuration shows, among others.
const struct {
    const char *name;
    std::vector<uint8_t> attributes;
} kinds[] = {
    {"fc1/1", {1, 2, 3, 4, 5, 6, 7, 8, 12, 15, 29, 36, 44}},
    {"Ethernet2/1", {1, 2, 3, 4, 5, 6, 17, 23, 29, 36, 44}},
    {"if13-3/1", {1, 2, 3, 5, 6, 17, 23, 29, 36, 44}},
    {"if11-4/1", {1, 6, 29, 36, 44}},
    {"if26-5/1", {1, 2, 3, 4, 5, 6, 17, 23, 29, 36, 44}},
    {"fcip1", {1, 2, 3, 4, 6, 7, 15, 29, 36, 44}},
    {"port-channel1", {1, 2, 3, 4, 5, 6, 7, 8, 15, 29, 36, 44}},
    {"if22-4", {1, 2, 3, 4, 5, 6, 7, 8, 15, 29, 36, 44}},
    {"port-channel2", {1, 2, 3, 4, 5, 6, 17, 23, 29, 36, 44}},
    {"mgmt0", {1, 3, 6, 17, 23, 29, 36, 44}},
    {"loopback1", {1, 6, 29, 36}},
    {"if254-1", {1, 2, 3, 5, 6, 29, 36, 44}},
    {"Ethernet2/1.5", {1, 6, 29, 36}},
    {"port-channel2.7", {1, 6, 29, 36}},
};

// A value of each attribute that no kind of port starts with, and where the record shows it.
const struct {
    uint8_t attribute;
    uint32_t value;
    uint32_t (*shown)(const pm_port_info_t &info);
} numbers[] = {
    {PM_ATTR_ADMIN_STATE, 2, [](const auto &info) { return uint32_t{info.admin_state}; }},
    {PM_ATTR_PORT_MODE, 0x80000, [](const auto &info) { return uint32_t{info.admin_mode}; }},
    {PM_ATTR_SPEED, 12345, [](const auto &info) { return uint32_t{info.admin_speed}; }},
    {PM_ATTR_TRUNK_MODE, 3, [](const auto &info) { return uint32_t{info.admin_trunk_mode}; }},
    {PM_ATTR_BEACON_MODE, 1, [](const auto &info) { return uint32_t{info.beacon_mode}; }},
    {PM_ATTR_RX_BUF_SIZE, 0x1234, [](const auto &info) { return uint32_t{info.rx_buf_size}; }},
    {PM_ATTR_RX_BB_CREDIT, 0x12345678, [](const auto &info) { return uint32_t{info.bb_credit[0]}; }},
    {PM_ATTR_RATE_MODE, 2, [](const auto &info) { return uint32_t{info.rate_mode}; }},
    {PM_ATTR_PORT_VSAN, 0x123, [](const auto &info) { return uint32_t{info.port_vsan}; }},
    {PM_ATTR_DUPLEX, 1, [](const auto &info) { return uint32_t{info.duplex}; }},
    {PM_ATTR_AUTO_NEG, 2, [](const auto &info) { return uint32_t{info.auto_neg}; }},
    {PM_ATTR_MTU, 0x1234, [](const auto &info) { return uint32_t{info.mtu}; }},
    {PM_ATTR_DOWN_ON_LINK_FAILURE, 3, [](const auto &info) { return uint32_t{info.down_on_link_failure}; }},
};

TEST(config_attributes, are_on_the_kinds_of_ports_that_have_them) {
    for (const auto &[name, attributes] : kinds) {
        for (const auto &[attribute, value, shown] : numbers) {
            switch_state state = state_of(every_kind);
            const pm_port_info_t before = info_of(state, name);
            const bool has = std::find(attributes.begin(), attributes.end(), attribute) != attributes.end();
            EXPECT_EQ(set(state, name, number_element(attribute, value)), has ? 0 : PM_ERR_REJECTED)
                << name << " " << int{attribute};
            EXPECT_EQ(shown(info_of(state, name)), has ? value : shown(before)) << name << " " << int{attribute};
            EXPECT_EQ(std::memcmp(&info_of(state, name), &before, sizeof before) == 0, !has) << name;
        }
    }
}

TEST(config_attributes, are_a_description_and_a_bandwidth_on_every_kind) {
    for (const auto &[name, attributes] : kinds) {
        switch_state state = state_of(every_kind);
        EXPECT_EQ(set(state, name, text_element(PM_ATTR_DESCRIPTION, "new")), 0u);
        EXPECT_STREQ(info_of(state, name).description, "new") << name;
        EXPECT_EQ(set(state, name, number_element(PM_ATTR_BANDWIDTH, 77)), 0u);
        EXPECT_EQ(info_of(state, name).bandwidth, info_of(state, name).oper_state == 1 ? 77u : 0u) << name;
    }
}

TEST(config_attributes, are_all_in_the_tables_above) {
    std::set<uint8_t> seen{PM_ATTR_DESCRIPTION, PM_ATTR_BANDWIDTH};
    for (const auto &each : numbers) seen.insert(each.attribute);
    EXPECT_EQ(seen.size(), virtual_switch::config_attributes.size());
    for (const auto &attribute : virtual_switch::config_attributes) EXPECT_TRUE(seen.count(attribute.number));
}

TEST(config_attributes, take_values_up_to_the_ends_of_their_ranges) {
    const struct {
        const char *name;
        uint8_t attribute;
        std::vector<uint32_t> good;
        std::vector<uint32_t> bad;
    } cases[] = {
        {fc, PM_ATTR_ADMIN_STATE, {1, 2}, {0, 3, 255}},
        {fc,
         PM_ATTR_PORT_MODE,
         {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x60, 0x200, 0x400, 0x4000, 0x8000, 0x80000, 0x100000, 0x400000,
          0x800000, 0x4000000, 0x8000000},
         {0, 3, 0x80, 0x100, 0x200000, 0x80000000, 0xffffffff}},
        {fc, PM_ATTR_SPEED, {0, 1, 2, 10, 110, 400000}, {3, 9, 400001, 0xffffffff}},
        {fc, PM_ATTR_TRUNK_MODE, {1, 2, 3}, {0, 4, 255}},
        {fc, PM_ATTR_BEACON_MODE, {1, 2}, {0, 3, 255}},
        {fc, PM_ATTR_RX_BUF_SIZE, {0, 0xffff}, {}},
        {fc, PM_ATTR_RX_BB_CREDIT, {0, 0xffffffff}, {}},
        {fc, PM_ATTR_RATE_MODE, {1, 2}, {0, 3, 255}},
        {fc, PM_ATTR_PORT_VSAN, {1, 4093}, {0, 4094, 0xffff}},
        {ethernet, PM_ATTR_DUPLEX, {1, 2, 3}, {0, 4, 255}},
        {ethernet, PM_ATTR_AUTO_NEG, {1, 2}, {0, 3, 0xffffffff}},
        {fc, PM_ATTR_MTU, {64, 65535}, {0, 63, 65536, 0xffffffff}},
        {fc, PM_ATTR_BANDWIDTH, {0, 0xffffffff}, {}},
        {fc, PM_ATTR_DOWN_ON_LINK_FAILURE, {3, 4}, {0, 2, 5, 255}},
    };
    for (const auto &[name, attribute, good, bad] : cases) {
        switch_state state = state_of(every_kind);
        for (const uint32_t value : good)
            EXPECT_EQ(set(state, name, number_element(attribute, value)), 0u) << int{attribute} << " " << value;
        const virtual_switch::configuration before = state.changes();
        for (const uint32_t value : bad)
            EXPECT_EQ(set(state, name, number_element(attribute, value)), PM_ERR_INVALID_PARAM)
                << int{attribute} << " " << value;
        EXPECT_EQ(state.changes(), before) << int{attribute};
    }
}

TEST(config_attributes, keep_descriptions_of_eighty_bytes) {
    switch_state state = state_of(every_kind);
    const std::string longest(80, '\xff');
    EXPECT_EQ(set(state, fc, text_element(PM_ATTR_DESCRIPTION, longest)), 0u);
    EXPECT_EQ(info_of(state, fc).description, longest);
    EXPECT_EQ(set(state, fc, text_element(PM_ATTR_DESCRIPTION, longest + "x")), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(info_of(state, fc).description, longest);
    EXPECT_EQ(set(state, fc, text_element(PM_ATTR_DESCRIPTION, std::string("cut\0here", 8))), 0u);
    const char cut[81] = "cut";
    EXPECT_EQ(std::memcmp(info_of(state, fc).description, cut, sizeof cut), 0);
    EXPECT_EQ(set(state, fc, text_element(PM_ATTR_DESCRIPTION, "")), 0u);
    EXPECT_STREQ(info_of(state, fc).description, "");
}

// What a chassis file fixed follows again.

switch_state with_fixed_values() {
    return state_of(std::string(every_kind) +
                    "[[ports]]\nname = 'fc1/1'\nstate = 'trunking'\noper_mode = 'TL'\noper_speed = 1000\n"
                    "oper_trunk_mode = 'on'\nadmin_mode = 'E'\n");
}

TEST(config_attributes, let_the_speed_follow) {
    switch_state state = with_fixed_values();
    EXPECT_EQ(info_of(state, fc).oper_speed, 1000u);
    set(state, fc, number_element(PM_ATTR_SPEED, 2000));
    EXPECT_EQ(info_of(state, fc).oper_speed, 2000u);
    EXPECT_EQ(info_of(state, fc).bandwidth, 2000000u);
    set(state, fc, number_element(PM_ATTR_SPEED, 0));
    EXPECT_EQ(info_of(state, fc).oper_speed, 8000u);
    EXPECT_EQ(info_of(state, fc).oper_mode, 0x10u);
}

TEST(config_attributes, let_the_port_mode_follow) {
    switch_state state = with_fixed_values();
    set(state, fc, number_element(PM_ATTR_PORT_MODE, 0x20));
    EXPECT_EQ(info_of(state, fc).oper_mode, 0x20u);
    set(state, fc, number_element(PM_ATTR_PORT_MODE, 4));
    EXPECT_EQ(info_of(state, fc).oper_mode, 8u);  // E that trunks is TE
    EXPECT_EQ(info_of(state, fc).oper_speed, 1000u);
}

TEST(config_attributes, let_the_trunking_mode_follow) {
    const struct {
        const char *name;
        uint32_t configured;
        uint8_t trunking;
        uint8_t state;
    } cases[] = {{"fc1/1", 1, 1, 1},       {"fc1/1", 2, 2, 8},       {"fc1/1", 3, 2, 8},
                 {"fc1/2", 1, 1, 1},       {"fc1/2", 2, 1, 1},       {"fc1/2", 3, 1, 1},
                 {"Ethernet2/1", 1, 1, 1}, {"Ethernet2/1", 2, 2, 1}, {"Ethernet2/1", 3, 1, 1}};
    for (const auto &[name, configured, trunking, oper_state] : cases) {
        switch_state state = with_fixed_values();
        EXPECT_EQ(set(state, name, number_element(PM_ATTR_TRUNK_MODE, configured)), 0u);
        EXPECT_EQ(info_of(state, name).oper_trunk_mode, trunking) << name << " " << configured;
        EXPECT_EQ(info_of(state, name).oper_state, oper_state) << name << " " << configured;
    }
    switch_state state = with_fixed_values();
    set(state, fc, number_element(PM_ATTR_TRUNK_MODE, 2));
    set(state, fc, number_element(PM_ATTR_ADMIN_STATE, 2));
    EXPECT_EQ(info_of(state, fc).oper_trunk_mode, 1);
}

// A running configuration that is replayed, value by value.
TEST(config_attributes, change_nothing_when_they_are_set_to_what_they_are) {
    for (const char *file : {"director.toml", "fixed.toml"}) {
        const auto chassis = virtual_switch::load_chassis(std::string(SOURCE_FOLDER) + "/examples/chassis/" + file);
        virtual_switch::configuration changes;
        for (const auto &[if_index, at] : chassis.ports) {
            for (const auto &attribute : virtual_switch::config_attributes) {
                if (!has_attribute(at.kind, attribute)) continue;
                const virtual_switch::setting_value value = value_in(*attribute.setting, at.configured);
                EXPECT_TRUE(is_good(*attribute.setting, value)) << virtual_switch::name_of(if_index);
                changes.settings[if_index][attribute.number] = value;
            }
        }
        const auto replayed = configured(chassis, changes);
        for (const auto &[if_index, at] : chassis.ports)
            EXPECT_EQ(std::memcmp(&at.info, &replayed.find(if_index)->info, sizeof at.info), 0)
                << virtual_switch::name_of(if_index);
    }
}

TEST(config_attributes, let_the_bandwidth_follow_from_zero) {
    switch_state state = state_of(std::string(every_kind) + "[[ports]]\nname = 'fc1/1'\nbandwidth = 5\n");
    EXPECT_EQ(info_of(state, fc).bandwidth, 5u);
    set(state, fc, number_element(PM_ATTR_BANDWIDTH, 0));
    EXPECT_EQ(info_of(state, fc).bandwidth, 8000000u);
}

// What depends on the port that is set.

TEST(admin_state, comes_before_whatever_the_file_says) {
    for (const char *word : {"up", "trunking", "testing", "down", "no-sfp", "error-disabled", "shutdown"}) {
        switch_state state = state_of(std::string(every_kind) + "[[ports]]\nname = 'fc1/1'\nstate = '" + word +
                                      "'\n[[ports]]\nname = 'fc1/2'\nstate = '" + word + "'\n");
        set(state, "fc1/1", number_element(PM_ATTR_ADMIN_STATE, 2));
        const pm_port_info_t &shut = info_of(state, "fc1/1");
        EXPECT_EQ(shut.oper_state, 2) << word;
        EXPECT_EQ(shut.state_reason, 12) << word;
        set(state, "fc1/1", number_element(PM_ATTR_ADMIN_STATE, 1));
        const bool was_shut = info_of(state, "fc1/2").admin_state == 2;
        const pm_port_info_t &up = info_of(state, "fc1/1");
        EXPECT_EQ(up.admin_state, 1) << word;
        EXPECT_EQ(up.oper_state, was_shut ? 1 : info_of(state, "fc1/2").oper_state) << word;
        EXPECT_EQ(up.state_reason, was_shut ? 2 : info_of(state, "fc1/2").state_reason) << word;
    }
}

TEST(admin_state, takes_channels_and_sub_interfaces_along) {
    switch_state state = state_of(every_kind);
    const uint32_t both = info_of(state, "port-channel2").oper_speed;
    set(state, "Ethernet2/3", number_element(PM_ATTR_ADMIN_STATE, 2));
    EXPECT_EQ(info_of(state, "port-channel2").oper_speed, both / 2);
    EXPECT_EQ(info_of(state, "port-channel2.7").oper_speed, both / 2);
    set(state, "Ethernet2/4", number_element(PM_ATTR_ADMIN_STATE, 2));
    EXPECT_EQ(info_of(state, "port-channel2").state_reason, 43);
    EXPECT_EQ(info_of(state, "port-channel2.7").state_reason, 26);
    set(state, "Ethernet2/4", number_element(PM_ATTR_ADMIN_STATE, 1));
    EXPECT_EQ(info_of(state, "port-channel2.7").oper_state, 1);
    set(state, "port-channel2", number_element(PM_ATTR_ADMIN_STATE, 2));
    EXPECT_EQ(info_of(state, "port-channel2").state_reason, 12);
    EXPECT_EQ(info_of(state, "port-channel2.7").state_reason, 26);
}

TEST(speed, of_a_member_changes_its_channel) {
    switch_state state = state_of(every_kind);
    set(state, "Ethernet2/3", number_element(PM_ATTR_SPEED, 1000));
    EXPECT_EQ(info_of(state, "port-channel2").oper_speed, 11000u);
    EXPECT_EQ(info_of(state, "port-channel2").bandwidth, 11000000u);
    EXPECT_EQ(info_of(state, "port-channel2.7").bandwidth, 11000000u);
}

}  // namespace
