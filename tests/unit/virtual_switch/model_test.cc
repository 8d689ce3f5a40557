// SPDX-License-Identifier: Apache-2.0
#include "chassis/model.h"

#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "names.h"
#include "protocol/line_card_node.h"

namespace {

using virtual_switch::chassis_model;

const chassis_model &chassis() {
    static const chassis_model model = virtual_switch::parse_chassis(R"(
[chassis]
name = "test"
type = 6
slots = 4
[[module]]
slot = 1
kind = "fc"
ports = 2
[[module]]
slot = 2
kind = "ethernet"
ports = 2
[[interface]]
name = "mgmt0"
[[port_channel]]
name = "port-channel1"
members = "fc1/2, fc1/1"
[[port_channel]]
name = "port-channel2"
members = "Ethernet2/1"
[[port_channel]]
name = "if22-3"
members = "Ethernet2/2"
[[port_channel]]
name = "port-channel4"
[[sub_interface]]
name = "port-channel2.7"
)");
    return model;
}

TEST(model, finds_ports) {
    EXPECT_EQ(chassis().find(index_of("fc1/2"))->info.if_index, index_of("fc1/2"));
    EXPECT_EQ(chassis().find(index_of("fc1/3")), nullptr);
}

TEST(model, finds_the_next_port_across_kinds_and_gaps) {
    EXPECT_EQ(chassis().next(0)->info.if_index, index_of("fc1/1"));
    EXPECT_EQ(chassis().next(index_of("fc1/2"))->info.if_index, index_of("Ethernet2/1"));
    EXPECT_EQ(chassis().next(index_of("fc3/9"))->info.if_index, index_of("Ethernet2/1"));
    EXPECT_EQ(chassis().next(index_of("port-channel2"))->info.if_index, index_of("port-channel2.7"));
    EXPECT_EQ(chassis().next(index_of("if22-3")), nullptr);
}

TEST(model, knows_the_first_member_of_a_channel) {
    EXPECT_EQ(chassis().first_member(index_of("port-channel1")), index_of("fc1/2"));
    EXPECT_EQ(chassis().first_member(index_of("port-channel4")), 0u);
    EXPECT_EQ(chassis().first_member(index_of("port-channel9")), 0u);
    EXPECT_EQ(chassis().first_member(index_of("fc1/1")), 0u);
}

TEST(model, knows_who_owns_an_interface) {
    const struct {
        const char *name;
        uint32_t sap;
    } cases[] = {{"fc1/1", 43},          {"Ethernet2/1", 45},      {"Ethernet9/9.4", 45}, {"port-channel1", 43},
                 {"port-channel2", 175}, {"port-channel2.7", 175}, {"port-channel4", 43}, {"port-channel9", 43},
                 {"if22-3", 175},        {"if22-4", 43},           {"mgmt0", 179},        {"fcip1", 43},
                 {"if11-1/1", 43},       {"if13-1/1", 43},         {"loopback1", 175},    {"if26-1/1", 175},
                 {"if254-1", 43}};
    for (const auto &[name, sap] : cases) EXPECT_EQ(chassis().owner_sap(index_of(name)), sap) << name;
    EXPECT_EQ(chassis().owner_sap(0), 43u);
    EXPECT_EQ(chassis().owner_sap(0x99000000), 43u);
}

TEST(model, gives_line_cards_their_nodes) {
    EXPECT_EQ(pm::line_card_node(0), 0x102u);
    EXPECT_EQ(pm::line_card_node(4), 0x502u);
    EXPECT_EQ(pm::line_card_node(255), 2u);
    EXPECT_EQ(chassis().line_cards.at(1).node(), 0x202u);
}

}  // namespace
