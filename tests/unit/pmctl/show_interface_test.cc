// SPDX-License-Identifier: Apache-2.0
// Commands from their words to output, messages and exit status.
#include <cerrno>
#include <sstream>

#include "command_test.h"
#include "fixed_records.h"
#include "port_mgr/status.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// The lines that begin a block.
std::vector<std::string> titles_in(const std::string &text) {
    std::vector<std::string> titles;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (!line.empty() && line.front() != ' ') titles.push_back(line);
    return titles;
}

class show_interface : public command_test {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "interface"});
        return command_test::run(std::move(words));
    }
};

TEST_F(show_interface, asks_once_for_each_range) {
    answer("fc1/1 fc1/12", {full_port()});
    answer("fc2/3 fc2/3", {bare_port()});
    const auto outcome = run({"fc1/1-12,fc2/3"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.messages, IsEmpty());
    EXPECT_THAT(the_switch.asked, ElementsAre("fc1/1 fc1/12", "fc2/3 fc2/3"));
    EXPECT_THAT(outcome.output, StartsWith("fc1/4\n  General\n"));
    EXPECT_THAT(outcome.output, HasSubstr("\n\nmgmt0\n"));
}

pm_port_info_t port_named(const char *name) {
    pm_port_info_t port = full_port();
    port.if_index = index_named(name);
    return port;
}

TEST_F(show_interface, asks_for_a_long_range_in_pages) {
    answer("fc1/1 fc1/16", {port_named("fc1/1"), port_named("fc1/16")});
    answer("fc1/17 fc1/32", {port_named("fc1/17")});
    answer("fc1/33 fc1/48", {port_named("fc1/48")});
    const auto outcome = run({"fc1/1-48"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(the_switch.asked, ElementsAre("fc1/1 fc1/16", "fc1/17 fc1/32", "fc1/33 fc1/48"));
    EXPECT_THAT(titles_in(outcome.output), ElementsAre("fc1/1", "fc1/16", "fc1/17", "fc1/48"));
}

TEST_F(show_interface, ends_pages_where_the_range_ends) {
    answer("port-channel1 port-channel16", {full_port()});
    EXPECT_EQ(run({"po1-16"}).status, 0);
    EXPECT_EQ(run({"fcip1-17"}).status, 1);
    EXPECT_EQ(run({"loopback1-17"}).status, 1);
    EXPECT_THAT(the_switch.asked, ElementsAre("port-channel1 port-channel16", "fcip1 fcip16", "fcip17 fcip17",
                                              "loopback1 loopback16", "loopback17 loopback17"));
}

TEST_F(show_interface, loses_no_sub_interface_between_two_pages) {
    answer("Ethernet4/1 Ethernet4/16.4095", {port_named("Ethernet4/16.5")});
    answer("Ethernet4/17 Ethernet4/20", {port_named("Ethernet4/17")});
    EXPECT_THAT(titles_in(run({"eth4/1-20"}).output), ElementsAre("Ethernet4/16.5", "Ethernet4/17"));
}

TEST_F(show_interface, asks_for_sub_interfaces_in_pages) {
    answer("Ethernet2/7.116 Ethernet2/7.120", {port_named("Ethernet2/7.118")});
    const auto outcome = run({"eth2/7.100-120"});
    EXPECT_THAT(the_switch.asked, ElementsAre("Ethernet2/7.100 Ethernet2/7.115", "Ethernet2/7.116 Ethernet2/7.120"));
    EXPECT_THAT(titles_in(outcome.output), ElementsAre("Ethernet2/7.118"));
}

TEST_F(show_interface, shows_what_exists_of_a_range) {
    refuse("fc1/1 fc1/16", PM_ERR_INVALID_RANGE);
    answer("fc1/17 fc1/32", {});
    answer("fc1/33 fc1/48", {port_named("fc1/48")});
    const auto some = run({"fc1/1-48"});
    EXPECT_EQ(some.status, 0);
    EXPECT_THAT(titles_in(some.output), ElementsAre("fc1/48"));
    refuse("fc2/1 fc2/16", PM_ERR_INVALID_RANGE);
    refuse("fc2/17 fc2/20", PM_ERR_INVALID_RANGE);
    EXPECT_THAT(run({"fc2/1-20"}).messages, ElementsAre("no such interface: fc2/1-20"));
}

TEST_F(show_interface, shows_no_part_of_a_range_for_the_whole) {
    answer("fc1/1 fc1/16", {port_named("fc1/1")});
    stay_silent("fc1/17 fc1/32", ETIMEDOUT);
    const auto outcome = run({"fc1/1-48"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1-48: Connection timed out"));
}

TEST_F(show_interface, asks_for_all_without_a_name) {
    exist({"fc1/4"});
    answer("fc1/4 fc1/4", {full_port()});
    EXPECT_EQ(run({}).status, 0);
    EXPECT_EQ(run({"--all"}).status, 0);
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "fc1/4 fc1/4", "brief", "fc1/4 fc1/4"));
}

TEST_F(show_interface, shows_the_others_when_one_does_not_exist) {
    answer("fc1/4 fc1/4", {full_port()});
    refuse("fc9/1 fc9/1", PM_ERR_INVALID_RANGE);
    answer("mgmt0 mgmt0", {bare_port()});
    const auto outcome = run({"fc1/4", "fc9/1", "mgmt0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1"));
    EXPECT_THAT(outcome.output, HasSubstr("fc1/4\n"));
    EXPECT_THAT(outcome.output, HasSubstr("mgmt0\n"));
    EXPECT_EQ(pmctl::message_line(outcome.messages[0]), "pmctl: no such interface: fc9/1\n");
}

TEST_F(show_interface, takes_an_empty_answer_for_no_such_interface) {
    answer("fc9/1 fc9/4", {});
    const auto outcome = run({"fc9/1-4", "--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1-4"));
    EXPECT_EQ(outcome.output, "{\n  \"interfaces\": []\n}\n");
}

TEST_F(show_interface, names_the_status_of_the_service) {
    refuse("fc1/1 fc1/1", PM_ERR_REJECTED);
    refuse("fc1/2 fc1/2", 0x402900ff);
    const auto outcome = run({"fc1/1,fc1/2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages,
                ElementsAre("fc1/1: request rejected (PM_ERR_REJECTED, 0x40290009)", "fc1/2: status 0x402900ff"));
    EXPECT_THAT(outcome.output, IsEmpty());
}

TEST_F(show_interface, says_that_no_switch_is_running_once) {
    the_switch.port_manager_runs = false;
    fail("fc1/1 fc1/1", EHOSTUNREACH);
    fail("fc1/2 fc1/2", EHOSTUNREACH);
    const auto outcome = run({"fc1/1", "fc1/2"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.messages,
                ElementsAre("no switch is running in /tmp/lab: start one with: pm-virtual-switch CHASSIS.toml"));
}

TEST_F(show_interface, tells_a_missing_service_from_a_missing_switch) {
    fail("mgmt0 mgmt0", EHOSTUNREACH);
    answer("fc1/4 fc1/4", {full_port()});
    const auto outcome = run({"mgmt0", "fc1/4"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("mgmt0: its service does not run on this switch"));
    EXPECT_THAT(outcome.output, StartsWith("fc1/4\n"));
}

TEST_F(show_interface, stops_asking_when_the_switch_falls_silent) {
    answer("fc1/4 fc1/4", {full_port()});
    stay_silent("fc1/5 fc1/5", ETIMEDOUT);
    const auto outcome = run({"fc1/4", "fc1/5", "fc1/6"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, StartsWith("fc1/4\n"));
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/5: Connection timed out"));
    EXPECT_THAT(the_switch.asked, ElementsAre("fc1/4 fc1/4", "fc1/5 fc1/5"));
}

TEST_F(show_interface, reports_every_failure_before_the_switch_fell_silent) {
    refuse("fc9/1 fc9/1", PM_ERR_INVALID_RANGE);
    stay_silent("fc1/5 fc1/5", ETIMEDOUT);
    const auto outcome = run({"fc9/1", "fc1/5"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fc9/1", "fc1/5: Connection timed out"));
}

TEST_F(show_interface, says_why_no_handle_opened) {
    the_switch.open_error = EACCES;
    const auto outcome = run({"fc1/1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("cannot open the message transport in /tmp/lab: Permission denied"));
    the_switch.open_error = EPERM;
    EXPECT_THAT(run({"fc1/1"}).messages, ElementsAre("cannot open the message transport in /tmp/lab: it must be your "
                                                     "own, or named by MTS_RUNTIME_DIR, with mode 0700, or 0710 or "
                                                     "0750 to share it with its group"));
}

TEST_F(show_interface, asks_nothing_for_a_wrong_command_line) {
    const auto bad_name = run({"fc1/1", "fcx1"});
    EXPECT_EQ(bad_name.status, 2);
    EXPECT_THAT(bad_name.messages, ElementsAre("not an interface name: fcx1; see pmctl show interface --help"));
    const auto both = run({"--all", "fc1/1"});
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.messages, ElementsAre("--all and interface names exclude each other"));
    const auto two_slots = run({"fc1/1", "fc1/1-fc2/4"});
    EXPECT_EQ(two_slots.status, 2);
    EXPECT_THAT(two_slots.messages, ElementsAre("the ends of the range lie on two slots: fc1/1-fc2/4"));
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

TEST_F(show_interface, names_failures_of_the_whole_switch) {
    the_switch.answer_status = PM_ERR_FAILURE;
    EXPECT_THAT(run({}).messages,
                ElementsAre("all interfaces: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"));
    the_switch.request_status = EAGAIN;
    const auto outcome = run({"brief"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("all interfaces: Resource temporarily unavailable"));
}

TEST_F(show_interface, shows_all_in_brief) {
    the_switch.brief_ports = {full_brief_port(), bare_brief_port()};
    const auto table = run({"brief"});
    EXPECT_EQ(table.status, 0);
    EXPECT_THAT(table.output, StartsWith("Interface  Admin mode"));
    const auto json = run({"brief", "--json"});
    EXPECT_EQ(json.status, 0);
    EXPECT_THAT(json.output, StartsWith("{\n  \"interfaces\": [\n"));
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "brief"));
}

TEST_F(show_interface, keeps_messages_on_one_line) {
    EXPECT_EQ(pmctl::message_line("not an interface name: fc\n1\x1b"), "pmctl: not an interface name: fc?1?\n");
}

}  // namespace
