// SPDX-License-Identifier: Apache-2.0
// What follows from the configuration of ports, and from one port for another.
#include <gtest/gtest.h>

#include <cstring>

#include "chassis/chassis_file.h"
#include "names.h"

namespace {

using virtual_switch::chassis_model;
constexpr uint32_t unknown_speed = virtual_switch::speed::unknown;

const std::string base = R"(
[chassis]
name = "test"
type = 6
slots = 4
[[module]]
slot = 1
kind = "fc"
ports = 3
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[port_channel]]
name = "port-channel1"
members = "fc1/1-3"
[[port_channel]]
name = "port-channel2"
members = "Ethernet2/1"
[[port_channel]]
name = "port-channel3"
[[sub_interface]]
name = "port-channel2.7, Ethernet2/2.8"
)";

pm_port_info_t info_of(const char *name, const std::string &settings) {
    return virtual_switch::parse_chassis(base + settings).find(index_of(name))->info;
}

std::vector<pm_port_info_t> reported(const chassis_model &model) {
    std::vector<pm_port_info_t> infos;
    for (const auto &[if_index, port] : model.ports) infos.push_back(port.info);
    return infos;
}

TEST(operation, takes_automatic_values_from_the_kind_of_port) {
    const pm_port_info_t info = info_of("fc1/1", "");
    EXPECT_EQ(info.oper_mode, 0x20u);
    EXPECT_EQ(info.oper_speed, 8000u);
    EXPECT_EQ(info.bandwidth, 8000000u);
    EXPECT_EQ(info.lane_state[3], 1);
}

TEST(operation, takes_configured_values) {
    const pm_port_info_t info = info_of("fc1/1", "[[ports]]\nname = 'fc1/1'\nadmin_mode = 'E'\nadmin_speed = 2000\n");
    EXPECT_EQ(info.oper_mode, 4u);
    EXPECT_EQ(info.oper_speed, 2000u);
    EXPECT_EQ(info.bandwidth, 2000000u);
}

TEST(operation, leaves_what_is_given) {
    const pm_port_info_t info = info_of("fc1/1",
                                        "[[ports]]\nname = 'fc1/1'\noper_mode = 'TE'\noper_speed = 1000\n"
                                        "bandwidth = 5\nlane_state = [4]\n");
    EXPECT_EQ(info.oper_mode, 8u);
    EXPECT_EQ(info.oper_speed, 1000u);
    EXPECT_EQ(info.bandwidth, 5u);
    EXPECT_EQ(info.lane_state[0], 4);
}

TEST(operation, has_no_values_when_down) {
    const pm_port_info_t info =
        info_of("fc1/1", "[[ports]]\nname = 'fc1/1'\nstate = 'down'\nadmin_mode = 'E'\nadmin_speed = 2000\nfcid = 7\n");
    EXPECT_EQ(info.oper_mode, 1u);
    EXPECT_EQ(info.oper_speed, unknown_speed);
    EXPECT_EQ(info.bandwidth, 0u);
    EXPECT_EQ(info.fcid, 0u);
    EXPECT_EQ(info.lane_state[0], 2);
    EXPECT_EQ(info.state_reason, 7);
}

TEST(channel, adds_up_the_members_that_are_up) {
    const pm_port_info_t info = info_of("port-channel1",
                                        "[[ports]]\nname = 'fc1/1'\nstate = 'down'\n"
                                        "[[ports]]\nname = 'fc1/2'\nadmin_speed = 2000\nadmin_mode = 'E'\n");
    EXPECT_EQ(info.oper_state, 1);
    EXPECT_EQ(info.state_reason, 2);
    EXPECT_EQ(info.oper_speed, 10000u);
    EXPECT_EQ(info.bandwidth, 10000000u);
    EXPECT_EQ(info.oper_mode, 4u);
}

TEST(channel, trunks_as_its_first_member_up_does) {
    const std::string trunking = "[[ports]]\nname = 'fc1/2-3'\nstate = 'trunking'\n";
    EXPECT_EQ(info_of("port-channel1", trunking).oper_state, 1);
    EXPECT_EQ(info_of("port-channel1", trunking + "[[ports]]\nname = 'fc1/1'\nstate = 'down'\n").oper_state, 8);
}

TEST(channel, is_as_its_members_make_it_whatever_it_is_given) {
    const pm_port_info_t info = info_of("port-channel1",
                                        "[[ports]]\nname = 'port-channel1'\nstate = 'down'\noper_speed = 10\n"
                                        "oper_mode = 'E'\n[[ports]]\nname = 'fc1/1'\noper_mode = 'TE'\n");
    EXPECT_EQ(info.oper_state, 1);
    EXPECT_EQ(info.state_reason, 2);
    EXPECT_EQ(info.oper_speed, 24000u);
    EXPECT_EQ(info.oper_mode, 8u);
}

TEST(channel, is_down_without_members_that_are_up) {
    for (const char *channel : {"port-channel1", "port-channel3"}) {
        const pm_port_info_t info = info_of(channel, "[[ports]]\nname = 'fc1/1-3'\nstate = 'no-sfp'\n");
        EXPECT_EQ(info.oper_state, 2);
        EXPECT_EQ(info.state_reason, 43);
        EXPECT_EQ(info.oper_speed, unknown_speed);
        EXPECT_EQ(info.bandwidth, 0u);
    }
}

TEST(channel, is_down_when_it_is_shut) {
    const pm_port_info_t info = info_of("port-channel1", "[[ports]]\nname = 'port-channel1'\nstate = 'shutdown'\n");
    EXPECT_EQ(info.oper_state, 2);
    EXPECT_EQ(info.state_reason, 12);
}

TEST(channel, is_named_by_its_members) {
    EXPECT_EQ(info_of("fc1/2", "").parent_if_index, index_of("port-channel1"));
    EXPECT_EQ(info_of("Ethernet2/2", "").parent_if_index, 0u);
}

TEST(sub_interface, runs_as_its_interface_does) {
    EXPECT_EQ(info_of("port-channel2.7", "").oper_speed, 10000u);
    EXPECT_EQ(info_of("Ethernet2/2.8", "[[ports]]\nname = 'Ethernet2/2'\noper_speed = 100\n").bandwidth, 100000u);
}

TEST(sub_interface, goes_down_with_its_interface) {
    const pm_port_info_t under_channel =
        info_of("port-channel2.7", "[[ports]]\nname = 'Ethernet2/1'\nstate = 'down'\n");
    EXPECT_EQ(under_channel.oper_state, 2);
    EXPECT_EQ(under_channel.state_reason, 26);
    EXPECT_EQ(info_of("Ethernet2/2.8", "[[ports]]\nname = 'Ethernet2/2'\nstate = 'shutdown'\n").state_reason, 26);
}

TEST(sub_interface, can_be_down_alone) {
    const pm_port_info_t info = info_of("Ethernet2/2.8", "[[ports]]\nname = 'Ethernet2/2.8'\nstate = 'shutdown'\n");
    EXPECT_EQ(info.state_reason, 12);
    EXPECT_EQ(info.oper_speed, unknown_speed);
}

TEST(operation, follows_a_change_of_the_model) {
    chassis_model model = virtual_switch::parse_chassis(base);
    pm_port_info_t &member = model.ports.at(index_of("Ethernet2/1")).configured;
    const std::vector<pm_port_info_t> before = reported(model);
    member.oper_state = 2;
    settle(model);
    EXPECT_EQ(model.find(index_of("port-channel2"))->info.oper_state, 2);
    EXPECT_EQ(model.find(index_of("port-channel2.7"))->info.state_reason, 26);
    member.oper_state = 1;
    settle(model);
    const std::vector<pm_port_info_t> after = reported(model);
    EXPECT_EQ(std::memcmp(before.data(), after.data(), before.size() * sizeof before[0]), 0);
}

TEST(operation, follows_a_change_of_members) {
    chassis_model model = virtual_switch::parse_chassis(base);
    model.members.at(index_of("port-channel1")).pop_back();
    settle(model);
    EXPECT_EQ(model.find(index_of("fc1/3"))->info.parent_if_index, 0u);
    EXPECT_EQ(model.find(index_of("port-channel1"))->info.oper_speed, 16000u);
}

TEST(operation, brings_automatic_speeds_to_what_they_mean) {
    const struct {
        const char *configured;
        uint32_t speed;
    } cases[] = {{"'auto'", 8000},
                 {"'auto max 2000'", 2000},
                 {"'auto max 4000'", 4000},
                 {"'auto 10 100'", 100},
                 {"16000", 16000}};
    for (const auto &[configured, speed] : cases) {
        const std::string settings = std::string("[[ports]]\nname = 'fc1/1'\nadmin_speed = ") + configured + "\n";
        EXPECT_EQ(info_of("fc1/1", settings).oper_speed, speed) << configured;
    }
}

TEST(operation, trunks_as_mode_and_state_say) {
    const struct {
        const char *name;
        const char *settings;
        uint8_t trunking;
        uint8_t state;
        uint32_t mode;
    } cases[] = {
        {"fc1/1", "admin_mode = 'E'", 1, 1, 4},
        {"fc1/1", "admin_mode = 'E'\nstate = 'trunking'", 2, 8, 8},
        {"fc1/1", "admin_mode = 'E'\nstate = 'trunking'\nadmin_trunk_mode = 'auto'", 2, 8, 8},
        {"fc1/1", "admin_mode = 'E'\nstate = 'trunking'\nadmin_trunk_mode = 'off'", 1, 1, 4},
        {"fc1/1", "admin_mode = 'E'\nstate = 'trunking'\noper_trunk_mode = 'off'", 1, 8, 8},
        {"fc1/1", "state = 'down'\noper_trunk_mode = 'on'", 1, 2, 1},
        {"Ethernet2/2", "", 2, 1, 0x100000},
        {"Ethernet2/2", "admin_trunk_mode = 'off'", 1, 1, 0x100000},
        {"Ethernet2/2", "admin_trunk_mode = 'auto'", 1, 1, 0x100000},
        {"Ethernet2/2", "state = 'no-sfp'", 1, 2, 1},
    };
    for (const auto &[name, settings, trunking, state, mode] : cases) {
        const pm_port_info_t info = info_of(name, std::string("[[ports]]\nname = '") + name + "'\n" + settings + "\n");
        EXPECT_EQ(info.oper_trunk_mode, trunking) << settings;
        EXPECT_EQ(info.oper_state, state) << settings;
        EXPECT_EQ(info.oper_mode, mode) << settings;
    }
}

TEST(operation, has_no_trunking_without_a_trunking_mode) {
    const pm_port_info_t info =
        virtual_switch::parse_chassis(base + "[[interface]]\nname = 'mgmt0'\n").find(index_of("mgmt0"))->info;
    EXPECT_EQ(info.oper_trunk_mode, 0);
}

TEST(operation, is_shut_down_for_that_reason_alone) {
    for (const char *settings :
         {"state = 'shutdown'\nstate_reason = 'offline'", "state = 'no-sfp'\nadmin_state = 'down'"}) {
        const pm_port_info_t info = info_of("fc1/1", std::string("[[ports]]\nname = 'fc1/1'\n") + settings + "\n");
        EXPECT_EQ(info.oper_state, 2) << settings;
        EXPECT_EQ(info.state_reason, 12) << settings;
        EXPECT_EQ(info.admin_state, 2) << settings;
    }
}

TEST(operation, leaves_a_bandwidth_of_their_own_to_channels_and_sub_interfaces) {
    const std::string settings = "[[ports]]\nname = 'port-channel2, port-channel2.7, Ethernet2/2.8'\nbandwidth = 5\n";
    for (const char *name : {"port-channel2", "port-channel2.7", "Ethernet2/2.8"})
        EXPECT_EQ(info_of(name, settings).bandwidth, 5u) << name;
    EXPECT_EQ(info_of("port-channel2.7", "[[ports]]\nname = 'port-channel2'\nbandwidth = 5\n").bandwidth, 5u);
    EXPECT_EQ(info_of("port-channel2", settings + "[[ports]]\nname = 'Ethernet2/1'\nstate = 'down'\n").bandwidth, 0u);
}

TEST(channel, adds_up_to_the_largest_number_at_most) {
    const pm_port_info_t info =
        info_of("port-channel1", "[[ports]]\nname = 'fc1/1-3'\nadmin_speed = 400000\nbandwidth = 2000000000\n");
    EXPECT_EQ(info.oper_speed, 1200000u);
    EXPECT_EQ(info.bandwidth, UINT32_MAX);
}

}  // namespace
