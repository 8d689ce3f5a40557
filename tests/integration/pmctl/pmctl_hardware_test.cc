// SPDX-License-Identifier: Apache-2.0
// What line cards hold and count, shown by the client: transceivers, counters, indexes and resources.
#include <cmath>

#include "integration/pmctl/pmctl_program.h"
#include "support/json_schema.h"

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class pmctl_hardware : public pmctl_program {
  protected:
    // The objects that a show command lists, after holding its output to its schema.
    static json shown(const std::string &words, const char *schema, const char *array = "interfaces",
                      const char *definition = "interface") {
        const run_result run = shell(PMCTL " show " + words + " --json");
        EXPECT_EQ(run.messages, "") << words;
        const json objects = objects_in(run.output, array);
        const json_schema described(SOURCE_FOLDER "/docs/schema/pmctl-show-" + std::string(schema) + ".schema.json");
        for (const json &object : objects) described.expect_described(definition, object);
        return objects;
    }

    static json counters(const std::string &names) {
        return shown("interface counters " + names, "interface-counters");
    }
    static json transceivers(const std::string &words) {
        return shown("interface transceiver " + words, "interface-transceiver");
    }
};

TEST_F(pmctl_hardware, shows_the_transceiver_of_the_chassis_file) {
    const json port = transceivers("fc1/30").at(0);
    EXPECT_EQ(port.at("serial_number"), "IOF00000666");
    EXPECT_EQ(port.at("wavelength"), 850);
    EXPECT_NEAR(port.at("temperature").get<double>(), 71.5, 0.6);
    EXPECT_EQ(port.at("temperature_state"), "high warning");
    EXPECT_NEAR(port.at("bias").get<double>(), 13.2, 0.2);
    EXPECT_EQ(port.at("bias_state"), "high alarm");
    EXPECT_EQ(port.at("voltage_state"), "normal");
    EXPECT_THAT(port.at("alarms"), ElementsAre("bias high"));
}

TEST_F(pmctl_hardware, tells_powers_in_both_units) {
    for (const json &port : transceivers("fc1/1-4 fc2/25-26 Ethernet4/5")) {
        for (const std::string power : {"tx_power", "rx_power"}) {
            EXPECT_NEAR(port.at(power + "_dbm").get<double>(), 10 * std::log10(port.at(power).get<double>()), 0.01)
                << port.at("name");
        }
    }
}

TEST_F(pmctl_hardware, reads_details_from_the_line_card) {
    const json from_page = transceivers("fc2/25").at(0);
    const json from_card = transceivers("details fc2/25").at(0);
    EXPECT_EQ(from_page.at("read_by"), "port manager");
    EXPECT_EQ(from_card.at("read_by"), "line card");
    EXPECT_EQ(from_card.at("is_externally_calibrated"), true);
    for (const char *quantity : {"temperature", "voltage", "bias", "tx_power", "rx_power"}) {
        const double reading = from_page.at(quantity);
        EXPECT_NEAR(from_card.at(quantity).get<double>(), reading, 0.01 * reading) << quantity;
        EXPECT_EQ(from_card.at(std::string(quantity) + "_high_alarm"),
                  from_page.at(std::string(quantity) + "_high_alarm"));
    }
}

TEST_F(pmctl_hardware, shows_that_a_transceiver_is_absent) {
    const json port = transceivers("fc3/1").at(0);
    EXPECT_EQ(port.at("is_present"), false);
    EXPECT_EQ(port.at("temperature"), nullptr);
}

TEST_F(pmctl_hardware, shows_counters_that_advance) {
    const json before = counters("Ethernet4/5").at(0);
    const json after = counters("Ethernet4/5").at(0);
    for (const char *counter : {"rx_bytes", "rx_frames", "tx_bytes", "tx_frames"}) {
        EXPECT_GT(after.at(counter), before.at(counter)) << counter;
    }
}

TEST_F(pmctl_hardware, clears_the_counters_of_what_it_names_alone) {
    const json before = counters("Ethernet4/1-3");
    EXPECT_EQ(shell(PMCTL " clear counters Ethernet4/2").output, "cleared the counters of Ethernet4/2\n");
    const json after = counters("Ethernet4/1-3");
    EXPECT_LT(after.at(1).at("rx_bytes"), after.at(0).at("rx_bytes"));  // they have the same rates
    EXPECT_GT(after.at(0).at("rx_bytes"), before.at(0).at("rx_bytes"));
    EXPECT_GT(after.at(2).at("rx_bytes"), before.at(2).at("rx_bytes"));
}

TEST_F(pmctl_hardware, finds_the_counters_of_tunnels_on_their_line_card) {
    const json tunnels = counters("fcip1-3");
    EXPECT_GT(tunnels.at(0).at("tx_frames"), 0);
    EXPECT_GT(tunnels.at(1).at("tx_frames"), 0);
    EXPECT_EQ(tunnels.at(2).at("tx_frames"), 0);  // it is down
}

TEST_F(pmctl_hardware, names_a_port_that_its_line_card_cannot_reach_and_shows_the_others) {
    const run_result run = shell(PMCTL " show interface counters Ethernet4/13-15 --json");
    EXPECT_THAT(names_in(run.output), ElementsAre("Ethernet4/13", "Ethernet4/15"));
    EXPECT_EQ(run.messages, "pmctl: Ethernet4/14: its line card cannot reach the port\n");
    EXPECT_EQ(run.status, 1);
}

// The director's rates of Ethernet4/5, within what the moments of reading leave open.
TEST_F(pmctl_hardware, shows_rates_per_second_while_watching) {
    const run_result run = pipeline(PMCTL " show interface counters Ethernet4/5 --watch 1 --json | " +
                                    std::string("grep -m 2 rx_bytes_per_second"));
    const std::vector<std::string> lines = lines_of(run.output);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], HasSubstr("null"));
    const double rate = std::stod(lines[1].substr(lines[1].find(':') + 1));
    EXPECT_NEAR(rate, 12500000, 0.1 * 12500000);
}

TEST_F(pmctl_hardware, lists_the_indexes_of_the_interfaces_that_brief_shows) {
    std::vector<std::string> names;
    for (const std::string &name : names_in(shell(PMCTL " show interface brief --json").output)) {
        if (name.starts_with("Ethernet")) names.push_back(name);
    }
    const json listed = shown("interface index --type ethernet", "interface-index");
    ASSERT_EQ(listed.size(), names.size());
    for (size_t i = 0; i < names.size(); ++i) EXPECT_EQ(listed[i].at("name"), names[i]);
}

TEST_F(pmctl_hardware, counts_ports_that_a_shutdown_frees) {
    const auto used_ports = [] {
        return shown("module resources 1", "module-resources", "resources", "resource").at(0).at("used").get<int>();
    };
    const int before = used_ports();
    ASSERT_EQ(shell(PMCTL " config interface fc1/1 shutdown").status, 0);
    EXPECT_EQ(used_ports(), before - 1);
}

TEST_F(pmctl_alone, shows_a_network_interface_of_its_own_machine) {
    const run_result run = shell(PMCTL " show host interface lo");
    EXPECT_THAT(run.output, StartsWith("lo\n"));
    EXPECT_EQ(run.status, 0);
    const run_result other = shell(PMCTL " show host interface no-such");
    EXPECT_EQ(other.messages, "pmctl: not in /proc/net/dev of this machine: no-such\n");
    EXPECT_EQ(other.status, 1);
}

}  // namespace
