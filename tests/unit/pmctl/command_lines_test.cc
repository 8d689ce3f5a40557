// SPDX-License-Identifier: Apache-2.0
#include "output/command_lines.h"

#include <gmock/gmock.h>

#include <cstring>

#include "fixed_records.h"

namespace {

using pmctl::command_lines;
using testing::HasSubstr;
using testing::Not;

// A port of this name whose every setting has a value of its own.
pm_port_info_t port_named(const char *name) {
    pm_port_info_t port = worded_port();
    port.if_index = index_named(name);
    port.admin_speed = 4000;
    port.phy_layer = 1;
    port.bb_credit[0] = 301;
    return port;
}

// One that has nothing but what such ports hold without having a setting.
pm_port_info_t idle_port(const char *name) {
    pm_port_info_t port = bare_port();
    port.if_index = index_named(name);
    port.admin_state = 1;
    port.admin_mode = 1;
    port.beacon_mode = 2;
    port.down_on_link_failure = 4;
    return port;
}

TEST(command_lines, write_every_setting) {
    EXPECT_EQ(command_lines(port_named("fc1/4")), R"(interface fc1/4
  no shutdown
  description "uplink to core"
  switchport mode E
  switchport trunk mode auto
  speed 4000
  rate-mode shared
  duplex half
  auto-negotiation off
  beacon on
  receive-buffer-size 2013
  receive-bb-credit 301
  port-vsan 2003
  mtu 201010
  bandwidth 4201009000
  down-on-link-failure on
)");
}

TEST(command_lines, write_defaults_too) {
    EXPECT_EQ(command_lines(idle_port("fc1/4")), R"(interface fc1/4
  no shutdown
  no description
  switchport mode auto
  speed auto
  beacon off
  receive-bb-credit default
  no bandwidth
  down-on-link-failure off
)");
    pm_port_info_t ethernet = idle_port("Ethernet2/7");
    ethernet.phy_layer = 2;
    EXPECT_EQ(command_lines(ethernet), R"(interface Ethernet2/7
  no shutdown
  no description
  switchport mode auto
  speed auto
  beacon off
  no bandwidth
  down-on-link-failure off
)");
}

struct idle_interface {
    const char *name;
    const char *lines;
};

class idle_interfaces : public testing::TestWithParam<idle_interface> {};

TEST_P(idle_interfaces, have_the_lines_of_their_kind) {
    EXPECT_EQ(command_lines(idle_port(GetParam().name)), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    all, idle_interfaces,
    testing::Values(
        idle_interface{"mgmt0",
                       "interface mgmt0\n  no shutdown\n  no description\n  speed auto\n  no bandwidth\n  "
                       "down-on-link-failure off\n"},
        idle_interface{"fcip1",
                       "interface fcip1\n  no shutdown\n  no description\n  switchport mode auto\n"
                       "  speed auto\n  no bandwidth\n  down-on-link-failure off\n"},
        idle_interface{"port-channel5",
                       "interface port-channel5\n  no shutdown\n  no description\n"
                       "  switchport mode auto\n  speed auto\n  no bandwidth\n  down-on-link-failure off\n"},
        idle_interface{
            "if11-1/2",
            "interface if11-1/2\n  no shutdown\n  no description\n  no bandwidth\n  down-on-link-failure off\n"},
        idle_interface{"loopback1",
                       "loopback create loopback1\ninterface loopback1\n  no shutdown\n"
                       "  no description\n  no bandwidth\n"},
        idle_interface{"Ethernet2/7.100",
                       "subinterface create Ethernet2/7.100\ninterface Ethernet2/7.100\n"
                       "  no shutdown\n  no description\n  no bandwidth\n"},
        idle_interface{"port-channel20.30",
                       "subinterface create port-channel20.30\ninterface port-channel20.30\n"
                       "  no shutdown\n  no description\n  no bandwidth\n"}));

class every_kind : public testing::TestWithParam<const char *> {};

// Whatever the predicates say, what a port was given is written.
TEST_P(every_kind, loses_no_setting) {
    const std::string lines = command_lines(port_named(GetParam()));
    const std::string of_fc = command_lines(port_named("fc1/4"));
    EXPECT_EQ(lines.substr(lines.find("  no shutdown")), of_fc.substr(of_fc.find("  no shutdown")));
}

INSTANTIATE_TEST_SUITE_P(all, every_kind,
                         testing::Values("Ethernet2/7", "Ethernet2/7.100", "port-channel5", "port-channel20.30",
                                         "mgmt0", "fcip1", "if11-1/2", "if13-5/1", "loopback1", "if22-5", "if26-1/4",
                                         "if254-7"));

std::string with_mode(uint32_t mode) {
    pm_port_info_t port = idle_port("fc1/4");
    port.admin_mode = mode;
    return command_lines(port);
}

TEST(command_lines, write_a_mode_that_has_no_text_of_its_own_as_a_number) {
    EXPECT_THAT(with_mode(0x8), HasSubstr("  switchport mode TE\n"));
    EXPECT_THAT(with_mode(0x40), HasSubstr("  switchport mode FL\n"));
    EXPECT_THAT(with_mode(0x80), HasSubstr("  switchport mode 128\n"));
    EXPECT_THAT(with_mode(0x100), HasSubstr("  switchport mode 256\n"));
    EXPECT_THAT(with_mode(0x800000), HasSubstr("  switchport mode private-vlan promiscuous\n"));
    EXPECT_THAT(with_mode(0xfffb), HasSubstr("  switchport mode Not E\n"));
    EXPECT_THAT(with_mode(0xc), HasSubstr("  switchport mode 12\n"));
    EXPECT_THAT(with_mode(0xffffffff), HasSubstr("  switchport mode 4294967295\n"));
    EXPECT_THAT(with_mode(0), Not(HasSubstr("switchport mode")));
}

TEST(command_lines, leave_out_values_that_a_setting_cannot_have) {
    pm_port_info_t port = full_port();
    port.admin_mode = 0;
    port.admin_speed = 0;
    EXPECT_EQ(command_lines(port), R"(interface fc1/4
  description "uplink to core"
  speed auto
  receive-buffer-size 2013
  receive-bb-credit 301
  port-vsan 2003
  mtu 201010
  bandwidth 4201009000
)");
}

TEST(command_lines, leave_out_what_interfaces_hold_that_do_not_have_a_setting) {
    pm_port_info_t port = idle_port("loopback1");
    const std::string idle = command_lines(port);
    port.admin_mode = 1;
    port.admin_trunk_mode = 1;
    port.beacon_mode = 2;
    port.down_on_link_failure = 4;
    EXPECT_EQ(command_lines(port), idle);
}

TEST(command_lines, write_a_bandwidth_where_one_is_set) {
    pm_port_info_t port = full_port();
    port.oper_speed = 4000;
    port.bandwidth = 4000000;
    EXPECT_THAT(command_lines(port), HasSubstr("  bandwidth 4000000\n")) << "which is what follows from the speed, too";
    port.bandwidth = 0;
    EXPECT_THAT(command_lines(port), HasSubstr("  no bandwidth\n"));
}

TEST(command_lines, shut_down_and_describe) {
    pm_port_info_t port = idle_port("fc1/4");
    port.admin_state = 2;
    strcpy(port.description, "a \"b\"\n");
    EXPECT_THAT(command_lines(port), HasSubstr("interface fc1/4\n  shutdown\n  description \"a \\\"b\\\"\\x0a\"\n"));
    memset(port.description, 'x', sizeof port.description);
    EXPECT_THAT(command_lines(port), HasSubstr("\"" + std::string(sizeof port.description, 'x') + "\"\n"));
}

TEST(command_lines, write_speeds_as_the_command_line_takes_them) {
    pm_port_info_t port = idle_port("fc1/4");
    for (const auto &[speed, words] : std::vector<std::pair<uint32_t, std::string>>{{1, "auto max 2000"},
                                                                                    {2, "auto max 4000"},
                                                                                    {110, "auto 10 100"},
                                                                                    {10000, "10000"},
                                                                                    {16000, "16000"},
                                                                                    {0, "auto"}}) {
        port.admin_speed = speed;
        EXPECT_THAT(command_lines(port), HasSubstr("  speed " + words + "\n"));
    }
}

}  // namespace
