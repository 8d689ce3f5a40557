// SPDX-License-Identifier: Apache-2.0
// The commands that configure, from their words to what the switch is asked for and what is said about it.
#include <fcntl.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "command_test.h"
#include "fixed_records.h"
#include "port_mgr/config_attribute.h"
#include "port_mgr/status.h"

namespace {

using bytes = std::vector<uint8_t>;
using testing::ElementsAre;
using testing::IsEmpty;

asked_change created(const char *what) { return {what, 0, {}}; }

class config : public command_test {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), "config");
        return command_test::run(std::move(words));
    }

    // The attribute that such words set, and its value.
    static asked_change change_by(std::vector<const char *> setting) {
        the_switch.changes.clear();
        setting.insert(setting.begin(), {"interface", "fc1/4"});
        EXPECT_EQ(run(std::move(setting)).status, 0);
        EXPECT_EQ(the_switch.changes.size(), 1);
        return the_switch.changes.empty() ? asked_change{} : the_switch.changes.front();
    }
};

bytes word_of(uint32_t value) {
    bytes host(sizeof value);
    memcpy(host.data(), &value, sizeof value);
    return host;
}

bytes halfword_of(uint16_t value) {
    bytes host(sizeof value);
    memcpy(host.data(), &value, sizeof value);
    return host;
}

TEST_F(config, sends_values_in_host_memory_as_wide_as_their_kind) {
    EXPECT_EQ(change_by({"shutdown"}), (asked_change{"fc1/4", PM_ATTR_ADMIN_STATE, {2}}));
    EXPECT_EQ(change_by({"no", "shutdown"}), (asked_change{"fc1/4", PM_ATTR_ADMIN_STATE, {1}}));
    EXPECT_EQ(change_by({"speed", "auto", "10", "100"}), (asked_change{"fc1/4", PM_ATTR_SPEED, word_of(110)}));
    EXPECT_EQ(change_by({"speed", "auto max 4000"}), (asked_change{"fc1/4", PM_ATTR_SPEED, word_of(2)}));
    EXPECT_EQ(change_by({"port-vsan", "1027"}), (asked_change{"fc1/4", PM_ATTR_PORT_VSAN, halfword_of(1027)}));
    EXPECT_EQ(change_by({"no", "bandwidth"}), (asked_change{"fc1/4", PM_ATTR_BANDWIDTH, word_of(0)}));
    EXPECT_EQ(change_by({"auto-negotiation", "off"}), (asked_change{"fc1/4", PM_ATTR_AUTO_NEG, word_of(2)}));
}

TEST_F(config, sends_texts_as_whole_fields) {
    bytes field(81);
    EXPECT_EQ(change_by({"no", "description"}), (asked_change{"fc1/4", PM_ATTR_DESCRIPTION, field}));
    memcpy(field.data(), "to  core", 8);
    EXPECT_EQ(change_by({"description", "to  core"}), (asked_change{"fc1/4", PM_ATTR_DESCRIPTION, field}));
    memcpy(field.data(), "a ++ -b ", 8);
    EXPECT_EQ(change_by({"description", "a", "++", "--", "-b", ""}).value, field);
}

TEST_F(config, says_who_makes_the_change) {
    change_by({"shutdown"});
    EXPECT_THAT(the_switch.asked_by, ElementsAre(std::string(getpwuid(geteuid())->pw_name) + " pmctl"));
}

TEST_F(config, sends_one_request_for_each_type_and_service) {
    the_switch.services = {{"port-channel2", 175}, {"Ethernet4/1", 177}, {"Ethernet4/2", 177}};
    EXPECT_EQ(run({"interface", "fc1/1-2,", "eth4/1", "po1-3", "fc1/2", ",eth4/2", "eth4/1.7", "shutdown"}).status, 0);
    EXPECT_THAT(the_switch.changes,
                ElementsAre(asked_change{"fc1/1 fc1/2", 1, {2}}, asked_change{"Ethernet4/1 Ethernet4/2", 1, {2}},
                            asked_change{"port-channel1 port-channel3", 1, {2}}, asked_change{"port-channel2", 1, {2}},
                            asked_change{"Ethernet4/1.7", 1, {2}}));
}

TEST_F(config, sends_pages_of_64) {
    EXPECT_EQ(run({"interface", "fcip1-130", "mtu", "2000"}).status, 0);
    ASSERT_EQ(the_switch.changes.size(), 3);
    EXPECT_THAT(the_switch.changes[0].interfaces, testing::EndsWith(" fcip64"));
    EXPECT_THAT(the_switch.changes[1].interfaces, testing::StartsWith("fcip65 "));
    EXPECT_EQ(the_switch.changes[2].interfaces, "fcip129 fcip130");
}

TEST_F(config, names_each_interface_that_refused) {
    the_switch.set_statuses = {
        {"fc1/2", PM_ERR_REJECTED}, {"fc1/3", PM_ERR_INVALID_PARAM}, {"fc1/4", PM_ERR_FAILURE}, {"mgmt0", 0x402900ff}};
    const auto outcome = run({"interface", "fc1/1-4", "mgmt0", "mtu", "70000"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(
        outcome.messages,
        ElementsAre(
            "fc1/2: it takes no mtu: request rejected (PM_ERR_REJECTED, 0x40290009)",
            "fc1/3: it does not take mtu 70000: invalid parameter, or malformed answer (PM_ERR_INVALID_PARAM, "
            "0x40290003)",
            "fc1/4: the switch could not keep mtu 70000: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)",
            "mgmt0: status 0x402900ff"));
    EXPECT_EQ(pmctl::message_line(outcome.messages[0]),
              "pmctl: fc1/2: it takes no mtu: request rejected (PM_ERR_REJECTED, 0x40290009)\n");
}

TEST_F(config, configures_what_exists_of_a_range) {
    the_switch.set_statuses = {{"fc1/3", PM_ERR_INVALID_RANGE}, {"fc1/4", PM_ERR_INVALID_RANGE}};
    EXPECT_EQ(run({"interface", "fc1/2-4", "shutdown"}).status, 0);
    const auto none = run({"interface", "fc1/3-4", "fc1/2", "fc1/4", "shutdown"});
    EXPECT_EQ(none.status, 1);
    EXPECT_THAT(none.messages, ElementsAre("no such interface: fc1/3-4", "no such interface: fc1/4"));
}

// What the library refuses on sub-interfaces of port channels it refuses without results.
TEST_F(config, says_what_sub_interfaces_do_not_take) {
    the_switch.set_failures = {{"port-channel20.30", PM_ERR_FAILURE}};
    const auto outcome = run({"interface", "po20.30-31", "fc1/1", "switchport", "mode", "E"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        outcome.messages,
        ElementsAre("port-channel20.30: it takes no switchport mode: request rejected (PM_ERR_REJECTED, 0x40290009)",
                    "port-channel20.31: it takes no switchport mode: request rejected (PM_ERR_REJECTED, 0x40290009)"));
    EXPECT_EQ(the_switch.changes.size(), 2);
}

pm_port_info_t with_vsan(const char *name, uint16_t vsan) {
    pm_port_info_t port = full_port();
    port.if_index = index_named(name);
    port.port_vsan = vsan;
    return port;
}

TEST_F(config, reports_what_nobody_did) {
    the_switch.silent = {"port-channel1", "port-channel2"};
    answer_configured("port-channel1", {with_vsan("port-channel1", 7)});
    answer_configured("port-channel2", {with_vsan("port-channel2", 8)});
    const auto outcome = run({"interface", "po1-3", "port-vsan", "8"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("port-channel1: no service of this switch takes its port-vsan"));
    the_switch.set_statuses = {{"port-channel3", PM_ERR_FAILURE}};
    EXPECT_THAT(run({"interface", "po1-3", "port-vsan", "8"}).messages,
                ElementsAre("port-channel1: no service of this switch takes its port-vsan",
                            "port-channel3: the switch could not keep port-vsan 8: missing or invalid arguments "
                            "(PM_ERR_FAILURE, 0x40290000)"));
}

TEST_F(config, reports_all_of_a_range_when_one_cannot_be_asked_about) {
    the_switch.silent = {"port-channel1"};
    refuse_configured("port-channel1", PM_ERR_FAILURE);
    the_switch.set_statuses = {{"port-channel2", PM_ERR_REJECTED}};
    EXPECT_THAT(run({"interface", "po1-2", "port-vsan", "8"}).messages,
                ElementsAre("port-channel1: no service of this switch takes its port-vsan",
                            "port-channel2: it takes no port-vsan: request rejected (PM_ERR_REJECTED, 0x40290009)"));
}

TEST_F(config, tells_a_missing_service_from_a_missing_switch) {
    the_switch.set_failures = {{"mgmt0", EHOSTUNREACH}};
    const auto service = run({"interface", "mgmt0", "fc1/1", "shutdown"});
    EXPECT_EQ(service.status, 1);
    EXPECT_THAT(service.messages, ElementsAre("mgmt0: its service does not run on this switch"));
    EXPECT_EQ(the_switch.changes.size(), 2);
    the_switch.port_manager_runs = false;
    const auto gone = run({"interface", "mgmt0", "fc1/1", "shutdown"});
    EXPECT_EQ(gone.status, 1);
    EXPECT_THAT(gone.messages,
                ElementsAre("no switch is running in /tmp/lab: start one with: pm-virtual-switch CHASSIS.toml"));
    EXPECT_EQ(the_switch.changes.size(), 3);
}

TEST_F(config, stops_when_the_switch_falls_silent) {
    the_switch.set_failures = {{"fc1/1", ETIMEDOUT}};
    const auto outcome = run({"interface", "fc1/1-3", "mgmt0", "shutdown"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre("fc1/1 and 2 more: Connection timed out"));
    EXPECT_EQ(the_switch.changes.size(), 1);
}

TEST_F(config, says_why_no_handle_opened) {
    the_switch.open_error = EACCES;
    EXPECT_THAT(run({"interface", "fc1/1", "shutdown"}).messages,
                ElementsAre("cannot open the message transport in /tmp/lab: Permission denied"));
    EXPECT_EQ(run({"loopback", "create", "loopback2"}).status, 1);
}

TEST_F(config, sends_nothing_for_a_wrong_command_line) {
    for (const auto &words : std::vector<std::vector<const char *>>{{"interface", "fc1/1", "shutdwn"},
                                                                    {"interface", "fx1/1", "shutdown"},
                                                                    {"interface", "fc1/1", "speed", "fast"},
                                                                    {"subinterface", "create", "fc1/1"},
                                                                    {"subinterface", "delete", "Ethernet4/7"},
                                                                    {"loopback", "create", "loopback1,mgmt0"}}) {
        const auto outcome = run(words);
        EXPECT_EQ(outcome.status, 2) << words[1];
        EXPECT_EQ(outcome.messages.size(), 1);
    }
    EXPECT_THAT(the_switch.changes, IsEmpty());
}

TEST_F(config, creates_and_deletes_range_by_range) {
    EXPECT_EQ(run({"subinterface", "create", "eth4/7.100-120,", "po20.30"}).status, 0);
    EXPECT_EQ(run({"subinterface", "delete", "eth4/7.100"}).status, 0);
    EXPECT_EQ(run({"loopback", "create", "loopback2-5", "loopback7"}).status, 0);
    EXPECT_EQ(run({"loopback", "delete", "loopback7"}).status, 0);
    EXPECT_THAT(the_switch.changes,
                ElementsAre(created("create Ethernet4/7.100 Ethernet4/7.120"), created("create port-channel20.30"),
                            created("delete Ethernet4/7.100"), created("create loopback2 loopback5"),
                            created("create loopback7"), created("delete loopback7")));
}

TEST_F(config, says_why_interfaces_are_not_created) {
    const auto refusal = [](uint32_t status, std::vector<const char *> words) {
        the_switch.creation_status = status;
        const auto outcome = run(std::move(words));
        EXPECT_EQ(outcome.status, 1);
        return outcome.messages;
    };
    EXPECT_THAT(refusal(PM_ERR_INVALID_RANGE, {"subinterface", "create", "eth9/7.2"}),
                ElementsAre("eth9/7.2: its main interface does not exist, or can have no sub-interfaces: "
                            "no such interface or range (PM_ERR_INVALID_RANGE, 0x4029000a)"));
    EXPECT_THAT(refusal(PM_ERR_INVALID_PARAM, {"subinterface", "create", "eth4/7.1"}),
                ElementsAre("eth4/7.1: the numbers 1, 4094 and 4095 are reserved: invalid parameter, or malformed "
                            "answer (PM_ERR_INVALID_PARAM, 0x40290003)"));
    EXPECT_THAT(refusal(PM_ERR_INVALID_RANGE, {"subinterface", "delete", "eth4/7.5", "eth4/7.6"}),
                ElementsAre("no such interface: eth4/7.5", "no such interface: eth4/7.6"));
    EXPECT_THAT(refusal(PM_ERR_INVALID_RANGE, {"loopback", "delete", "loopback5"}),
                ElementsAre("no such interface: loopback5"));
    EXPECT_THAT(refusal(PM_ERR_FAILURE, {"loopback", "create", "loopback5"}),
                ElementsAre("loopback5: missing or invalid arguments (PM_ERR_FAILURE, 0x40290000)"));
    the_switch.changes.clear();
    EXPECT_THAT(refusal(ETIMEDOUT, {"subinterface", "create", "eth4/7.5", "eth4/7.6"}),
                ElementsAre("eth4/7.5: Connection timed out"));
    EXPECT_EQ(the_switch.changes.size(), 1);
}

// A file for the time of a test.
class config_of_file : public config {
  protected:
    ~config_of_file() override { std::remove(path_.c_str()); }

    pmctl::outcome run_file(const std::string &text) {
        std::ofstream(path_, std::ios::binary) << text;
        return run({path_.c_str()});
    }

    [[nodiscard]] std::string at(int line) const { return path_ + ":" + std::to_string(line) + ": "; }

    std::string path_ = testing::TempDir() + "pmctl_config_" + std::to_string(getpid()) + ".cfg";
};

constexpr const char *good_lines =
    "subinterface create Ethernet4/7.5\n"
    "interface fc1/1, fc1/2\n"
    "  shutdown\n"
    "\n"
    "loopback delete loopback2\n"
    "interface mgmt0\n"
    "  mtu 1500\n";

TEST_F(config_of_file, is_carried_out_in_order) {
    const auto outcome = run_file(good_lines);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.messages, IsEmpty());
    EXPECT_THAT(the_switch.changes, ElementsAre(created("create Ethernet4/7.5"), asked_change{"fc1/1 fc1/2", 1, {2}},
                                                created("delete loopback2"), asked_change{"mgmt0", 29, word_of(1500)}));
}

TEST_F(config_of_file, goes_on_after_a_failure) {
    the_switch.set_statuses = {{"fc1/1", PM_ERR_INVALID_RANGE}, {"fc1/2", PM_ERR_REJECTED}};
    the_switch.set_failures = {{"mgmt0", EHOSTUNREACH}};
    the_switch.creation_status = PM_ERR_INVALID_RANGE;
    const auto outcome = run_file(good_lines);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        outcome.messages,
        ElementsAre(at(1) + "Ethernet4/7.5: its main interface does not exist, or can have no sub-interfaces: "
                            "no such interface or range (PM_ERR_INVALID_RANGE, 0x4029000a)",
                    at(3) + "no such interface: fc1/1",
                    at(3) + "fc1/2: it takes no shutdown: request rejected (PM_ERR_REJECTED, 0x40290009)",
                    at(5) + "no such interface: loopback2", at(7) + "mgmt0: its service does not run on this switch"));
    EXPECT_EQ(the_switch.changes.size(), 4);
}

TEST_F(config_of_file, is_left_when_the_switch_falls_silent) {
    the_switch.set_failures = {{"fc1/1", ETIMEDOUT}};
    const auto outcome = run_file(good_lines);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages, ElementsAre(at(3) + "fc1/1 and 1 more: Connection timed out",
                                              at(3) + "what follows was not carried out"));
    EXPECT_EQ(the_switch.changes.size(), 2);
    EXPECT_THAT(run_file("interface fc1/1\nshutdown\n").messages, ElementsAre(at(2) + "fc1/1: Connection timed out"));
}

TEST_F(config_of_file, is_checked_before_anything_is_sent) {
    const auto outcome = run_file(std::string(good_lines) + "  mtu big\nshutdwn\n");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.messages,
                ElementsAre(at(8) + "not a value of mtu: big; it takes a number of bytes from 1 to 4294967295",
                            at(9) + "not a known setting: shutdwn; did you mean shutdown?"));
    EXPECT_THAT(the_switch.changes, IsEmpty());
}

TEST_F(config_of_file, may_be_empty_or_one_mebibyte_long) {
    EXPECT_EQ(run_file("").status, 0);
    const std::string longest(1024UL * 1024 - std::string(good_lines).size(), '\n');
    EXPECT_EQ(run_file(longest + good_lines).status, 0);
    EXPECT_EQ(the_switch.changes.size(), 4);
    const auto longer = run_file("\n" + longest + good_lines);
    EXPECT_EQ(longer.status, 2);
    EXPECT_THAT(longer.messages, ElementsAre(path_ + " is longer than 1048576 bytes"));
    EXPECT_EQ(the_switch.changes.size(), 4);
}

TEST_F(config_of_file, must_be_readable) {
    const auto missing = run({"/nonexistent/lab.cfg"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_THAT(missing.messages, ElementsAre("cannot read /nonexistent/lab.cfg: No such file or directory"));
    EXPECT_THAT(run({"/"}).messages, ElementsAre("cannot read /: Is a directory"));
}

TEST_F(config_of_file, is_standard_input_for_a_dash) {
    std::ofstream(path_) << "interface fc1/1\nshutdown\nspeed fast\n";
    const int before = dup(STDIN_FILENO);
    ASSERT_NE(freopen(path_.c_str(), "r", stdin), nullptr);
    const auto outcome = run({"-"});
    EXPECT_NE(fcntl(STDIN_FILENO, F_GETFD), -1) << "it stays open";
    EXPECT_EQ(dup2(before, STDIN_FILENO), STDIN_FILENO);
    close(before);
    EXPECT_EQ(outcome.status, 2);
    ASSERT_EQ(outcome.messages.size(), 1);
    EXPECT_THAT(outcome.messages[0], testing::StartsWith("standard input:3: not a value of speed: fast"));
}

}  // namespace
