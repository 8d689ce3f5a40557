// SPDX-License-Identifier: Apache-2.0
#include <cerrno>

#include "command_test.h"
#include "fixed_records.h"
#include "output/command_lines.h"
#include "port_mgr/status.h"

namespace {

using pmctl::command_lines;
using testing::ElementsAre;

class show_running_config : public command_test {};

pm_port_info_t port_named(const char *name) {
    pm_port_info_t port = full_port();
    port.if_index = index_named(name);
    return port;
}

pm_port_info_brief_t brief_named(const char *name) {
    pm_port_info_brief_t port{};
    port.if_index = index_named(name);
    return port;
}

TEST_F(show_running_config, parts_interfaces_by_a_blank_line) {
    the_switch.brief_ports = {brief_named("fc1/4"), brief_named("mgmt0")};
    answer_configured("fc1/4", {full_port()});
    answer_configured("mgmt0", {bare_port()});
    const auto outcome = run({"show", "running-config"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output, command_lines(full_port()) + "\n" + command_lines(bare_port()));
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "config fc1/4", "config mgmt0"));
}

TEST_F(show_running_config, asks_each_service_about_its_interfaces_and_keeps_their_order) {
    for (const char *name : {"port-channel1", "port-channel2", "port-channel2.7", "port-channel3"})
        the_switch.brief_ports.push_back(brief_named(name));
    the_switch.services = {{"port-channel2", 175}, {"port-channel2.7", 175}};
    answer_configured("port-channel1 port-channel3", {port_named("port-channel1"), port_named("port-channel3")});
    answer_configured("port-channel2", {port_named("port-channel2")});
    refuse_configured("port-channel2.7", PM_ERR_FAILURE);
    const auto outcome = run({"show", "running-config"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages,
                ElementsAre("port-channel2.7: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"));
    EXPECT_EQ(outcome.output, command_lines(port_named("port-channel1")) + "\n" +
                                  command_lines(port_named("port-channel2")) + "\n" +
                                  command_lines(port_named("port-channel3")));
}

TEST_F(show_running_config, shows_the_interfaces_named) {
    answer_configured("mgmt0", {bare_port()});
    refuse_configured("fc9/1", PM_ERR_INVALID_RANGE);
    const auto outcome = run({"show", "running-config", "fc9/1", "mgmt0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, command_lines(bare_port()));
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1"));
}

TEST_F(show_running_config, asks_for_ranges_in_pages) {
    answer_configured("Ethernet4/1 Ethernet4/16.4095", {port_named("Ethernet4/16.5")});
    answer_configured("Ethernet4/17 Ethernet4/20", {port_named("Ethernet4/17")});
    EXPECT_EQ(run({"show", "running-config", "eth4/1-20"}).output,
              command_lines(port_named("Ethernet4/16.5")) + "\n" + command_lines(port_named("Ethernet4/17")));
}

TEST_F(show_running_config, stops_when_the_switch_falls_silent) {
    the_switch.configured["fc1/1"] = {ETIMEDOUT, 0, {}};
    const auto outcome = run({"show", "running-config", "fc1/1", "fc1/2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1: Connection timed out"));
    EXPECT_THAT(the_switch.asked, ElementsAre("config fc1/1"));
}

}  // namespace
