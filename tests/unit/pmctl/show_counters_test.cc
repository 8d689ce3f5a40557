// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <fstream>

#include "command_test.h"
#include "failure.h"
#include "port_mgr/status.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

pm_eth_stats_t counted(uint64_t frames) {
    pm_eth_stats_t stats{};
    stats.result = 1;
    stats.traffic[PM_ETH_TRAFFIC_RX].frames = frames;
    return stats;
}

class show_counters : public command_test {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"show", "interface", "counters"});
        return command_test::run(std::move(words));
    }

    static void count(const char *name, uint64_t frames) { the_switch.counters[name] = {0, 0, counted(frames)}; }

    static void fail(const char *name, int32_t status, uint32_t error) {
        the_switch.counters[name] = {status, error, {}};
    }
};

TEST_F(show_counters, ask_for_every_interface_that_counts_by_itself) {
    exist({"fc1/1", "Ethernet2/1", "Ethernet2/1.100", "port-channel5", "mgmt0", "fcip3", "if13-3/1", "if26-4/1",
           "if11-5/1", "loopback1"});
    count("Ethernet2/1", 1234567890123);
    for (const char *name : {"fcip3", "if13-3/1", "if26-4/1"}) count(name, 7);
    const auto outcome = run({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(the_switch.asked,
                ElementsAre("brief", "read Ethernet2/1", "read fcip3", "read if13-3/1", "read if26-4/1"));
    EXPECT_THAT(outcome.output,
                StartsWith("Received\n"
                           "Interface    Bytes  Frames         Unicast  Multicast  Broadcast  Pause  Errors  Drops\n"
                           "Ethernet2/1  0      1234567890123  0        0          0          0      0       0\n"
                           "fcip3        0      7              0"));
    EXPECT_THAT(outcome.output, HasSubstr("\n\nTransmitted\nInterface    Bytes"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("\nReceive errors\n")));
}

TEST_F(show_counters, show_errors_where_there_are_any) {
    exist({"Ethernet2/1", "Ethernet2/2"});
    count("Ethernet2/1", 1);
    count("Ethernet2/2", 1);
    the_switch.counters["Ethernet2/2"].stats.crc_errors = 17;
    EXPECT_THAT(run({}).output,
                EndsWith("\n\nReceive errors\n"
                         "Interface    Counting (s)  CRC  Alignment  Symbol  Undersize  Oversize  Fragments  Jabbers  "
                         "Overruns\n"
                         "Ethernet2/2  0             17   0          0       0          0         0          0        "
                         "0\n"));
}

TEST_F(show_counters, of_those_named_are_in_their_order) {
    exist({"Ethernet2/1", "Ethernet2/2", "Ethernet2/2.5"});
    for (const char *name : {"Ethernet2/1", "Ethernet2/2", "Ethernet2/2.5"}) count(name, 1);
    EXPECT_EQ(run({"Ethernet2/2.5", "Ethernet2/1-9"}).status, 0);
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "read Ethernet2/2.5", "read Ethernet2/1", "read Ethernet2/2"));
}

TEST_F(show_counters, name_each_port_that_fails_and_go_on) {
    exist({"Ethernet2/1", "Ethernet2/2", "Ethernet2/3", "Ethernet2/4", "Ethernet2/5", "Ethernet2/6", "Ethernet2/7"});
    fail("Ethernet2/2", -1, 0);
    fail("Ethernet2/3", static_cast<int32_t>(PM_ERR_REJECTED), 0);
    fail("Ethernet2/4", -1, EAGAIN);
    fail("Ethernet2/5", ENOENT, 0);
    the_switch.counters["Ethernet2/6"];  // succeeds without a result
    count("Ethernet2/7", 5);
    const auto outcome = run({"--json"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(
        outcome.messages,
        ElementsAre("Ethernet2/1: its line card does not answer", "Ethernet2/2: its line card cannot reach the port",
                    "Ethernet2/3: its line card refuses: request rejected (PM_ERR_REJECTED, 0x40290009)",
                    "Ethernet2/4: Resource temporarily unavailable", "Ethernet2/5: no line card counts for it",
                    "Ethernet2/6: the answer cannot be understood"));
    const json ports = json::parse(outcome.output)["interfaces"];
    ASSERT_EQ(ports.size(), 1u);
    EXPECT_EQ(ports[0].at("name"), "Ethernet2/7");
    EXPECT_EQ(ports[0].at("rx_frames"), 5);
}

TEST_F(show_counters, wait_once_for_a_line_card_that_hangs) {
    exist({"Ethernet2/1", "Ethernet2/2", "Ethernet2/2.7", "Ethernet3/1", "fcip3"});
    fail("Ethernet2/1", -1, ETIMEDOUT);
    count("Ethernet3/1", 1);
    count("fcip3", 1);
    const auto outcome = run({"Ethernet2/1-2", "Ethernet3/1", "Ethernet2/2.7", "fcip3"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "read Ethernet2/1", "read Ethernet3/1", "read fcip3"));
    EXPECT_THAT(outcome.messages, ElementsAre("Ethernet2/1: its line card did not answer in time",
                                              "Ethernet2/2: its line card did not answer in time about Ethernet2/1",
                                              "Ethernet2/2.7: its line card did not answer in time about Ethernet2/1"));
}

TEST_F(show_counters, end_when_a_signal_comes) {
    exist({"Ethernet2/1", "Ethernet2/2"});
    fail("Ethernet2/1", -1, EINTR);
    EXPECT_EQ(run({}).status, 1);
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "read Ethernet2/1"));
}

TEST_F(show_counters, are_not_there_for_every_kind) {
    exist({"fc1/1", "Ethernet2/1"});
    count("Ethernet2/1", 1);
    const auto outcome = run({"fc1/1", "fc2/1-3", "Ethernet2/1"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.messages,
                ElementsAre("no such interface: fc2/1-3", "fc1/1: interfaces of this kind have no counters"));
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "read Ethernet2/1"));
    EXPECT_THAT(outcome.output, HasSubstr("\nEthernet2/1  "));
}

TEST_F(show_counters, have_a_schema) {
    exist({"Ethernet2/1"});
    count("Ethernet2/1", UINT64_MAX);
    const json port = json::parse(run({"--json"}).output)["interfaces"].at(0);
    json_schema(DOCUMENTS "/schema/pmctl-show-interface-counters.schema.json").expect_described("interface", port);
    EXPECT_EQ(port.at("rx_frames"), UINT64_MAX);
    EXPECT_TRUE(port.at("rx_frames_per_second").is_null());
}

TEST_F(show_counters, have_every_key_in_the_manual) {
    std::ifstream file(DOCUMENTS "/pmctl.md");
    const std::string manual(std::istreambuf_iterator<char>(file), {});
    const json_schema schema(DOCUMENTS "/schema/pmctl-show-interface-counters.schema.json");
    for (const auto &[key, property] : schema.definition("interface").at("properties").items())
        EXPECT_THAT(manual, HasSubstr("| `" + key + "` | ")) << key;
}

class clear_counters : public show_counters {
  protected:
    static pmctl::outcome run(std::vector<const char *> words) {
        words.insert(words.begin(), {"clear", "counters"});
        return command_test::run(std::move(words));
    }
};

TEST_F(clear_counters, says_what_was_cleared) {
    exist({"Ethernet2/1", "Ethernet2/3", "fcip3"});
    for (const char *name : {"Ethernet2/1", "Ethernet2/3", "fcip3"}) count(name, 1);
    const auto outcome = run({"Ethernet2/1-3,", "fcip3"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output,
              "cleared the counters of Ethernet2/1\n"
              "cleared the counters of Ethernet2/3\n"
              "cleared the counters of fcip3\n");
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "clear Ethernet2/1", "clear Ethernet2/3", "clear fcip3"));
}

TEST_F(clear_counters, names_what_was_not_cleared) {
    exist({"Ethernet2/1", "Ethernet2/2", "Ethernet2/2.7", "fc1/1"});
    count("Ethernet2/2", 1);
    count("Ethernet2/2.7", 1);
    const auto outcome = run({"Ethernet2/1-2", "Ethernet2/2.7", "fc1/1", "fcip9"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "cleared the counters of Ethernet2/2\n");
    EXPECT_THAT(outcome.messages, ElementsAre("no such interface: fcip9", "Ethernet2/1: its line card does not answer",
                                              "Ethernet2/2.7: its counters are those of Ethernet2/2",
                                              "fc1/1: interfaces of this kind have no counters"));
    EXPECT_THAT(the_switch.asked, ElementsAre("brief", "clear Ethernet2/1", "clear Ethernet2/2"));
}

TEST_F(clear_counters, needs_names) {
    EXPECT_THROW(run({}), pmctl::usage_error);
    EXPECT_EQ(run({"Ethernet2/x"}).status, 2);
    EXPECT_THAT(the_switch.asked, IsEmpty());
}

}  // namespace
