// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_ranges.h"

#include <gmock/gmock.h>

#include "failure.h"
#include "switch/interface_names.h"
#include "unit/platform/runtime_dir_fixture.h"

namespace {

using pmctl::interface_range;
using testing::ElementsAre;

interface_range range_of(const std::string &typed) { return pmctl::parse_interface_ranges(typed).at(0); }

std::vector<std::string> members_of(const std::string &typed) {
    const interface_range range = range_of(typed);
    std::vector<std::string> names;
    for (uint32_t offset = 0; offset < range.count(); ++offset)
        names.push_back(pmctl::interface_name(range.member(offset)));
    return names;
}

// Without a switch.
class interface_ranges : public runtime_dir_test {};

TEST_F(interface_ranges, are_stepped_through) {
    EXPECT_THAT(members_of("fc9/2-4"), ElementsAre("fc9/2", "fc9/3", "fc9/4"));
    EXPECT_THAT(members_of("fc1/1-fc1/2"), ElementsAre("fc1/1", "fc1/2"));
    EXPECT_THAT(members_of("Ethernet2/47-48"), ElementsAre("Ethernet2/47", "Ethernet2/48"));
    EXPECT_THAT(members_of("port-channel1022-1023"), ElementsAre("port-channel1022", "port-channel1023"));
    EXPECT_THAT(members_of("fcip0-2"), ElementsAre("fcip0", "fcip1", "fcip2"));
}

TEST_F(interface_ranges, lie_on_slots_that_only_the_switch_knows) {
    EXPECT_THAT(members_of("fc10/1-3"), ElementsAre("fc10/1", "fc10/2", "fc10/3"));
    EXPECT_THAT(members_of("Ethernet32/7.1-2"), ElementsAre("Ethernet32/7.1", "Ethernet32/7.2"));
    EXPECT_THAT(members_of("if13-32/127-128"), ElementsAre("if13-32/127", "if13-32/128"));
}

TEST_F(interface_ranges, have_the_members_that_the_library_does_not_step_to) {
    EXPECT_THAT(members_of("Ethernet2/7.100-102"),
                ElementsAre("Ethernet2/7.100", "Ethernet2/7.101", "Ethernet2/7.102"));
    EXPECT_THAT(members_of("port-channel20.30-31"), ElementsAre("port-channel20.30", "port-channel20.31"));
    EXPECT_THAT(members_of("port-channel1/5-6"), ElementsAre("port-channel1/5", "port-channel1/6"));
    EXPECT_THAT(members_of("loopback1-3"), ElementsAre("loopback1", "loopback2", "loopback3"));
    EXPECT_THAT(members_of("if11-1/2-3"), ElementsAre("if11-1/2", "if11-1/3"));
    EXPECT_THAT(members_of("if13-5/1-3"), ElementsAre("if13-5/1", "if13-5/2", "if13-5/3"));
    EXPECT_THAT(members_of("if22-5-6"), ElementsAre("if22-5", "if22-6"));
    EXPECT_THAT(members_of("if26-1/4.1-2"), ElementsAre("if26-1/4.1", "if26-1/4.2"));
}

TEST_F(interface_ranges, are_counted) {
    EXPECT_EQ(range_of("fc1/1-128").count(), 128u);
    EXPECT_EQ(range_of("Ethernet2/7.1-4095").count(), 4095u);
    EXPECT_EQ(range_of("fcip0-65535").count(), 65536u);
    EXPECT_EQ(range_of("loopback0-65535").count(), 65536u);
    EXPECT_EQ(pmctl::interface_name(range_of("fcip0-65535").member(65535)), "fcip65535");
}

class single_interfaces : public testing::TestWithParam<const char *> {};

TEST_P(single_interfaces, are_ranges_of_one_whatever_their_kind) {
    EXPECT_THAT(members_of(GetParam()), ElementsAre(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(all, single_interfaces,
                         testing::Values("fc32/128", "Ethernet1/1", "Ethernet32/1.4095", "port-channel3/1023.7",
                                         "mgmt0", "fcip65535", "if11-1/2", "if13-32/1", "loopback1", "if22-5",
                                         "if26-1/4", "if254-7", "if99-0x3039"));

struct refused_range {
    const char *typed;
    const char *reason;
};

class refused_ranges : public interface_ranges, public testing::WithParamInterface<refused_range> {};

TEST_P(refused_ranges, say_what_is_wrong) {
    try {
        range_of(GetParam().typed);
        FAIL() << "taken: " << GetParam().typed;
    } catch (const pmctl::usage_error &error) {
        EXPECT_EQ(error.what(), std::string(GetParam().reason) + ": " + GetParam().typed);
    }
}

INSTANTIATE_TEST_SUITE_P(
    all, refused_ranges,
    testing::Values(
        refused_range{"fc1/1-Ethernet1/4", "the ends of the range are of two kinds"},
        refused_range{"po5-if22-6", "the ends of the range are of two kinds"},
        refused_range{"fc1/1-fc2/4", "the ends of the range lie on two slots"},
        refused_range{"Ethernet1/1.1-Ethernet2/1.2", "the ends of the range lie on two slots"},
        refused_range{"fc1/12-1", "the range runs backwards"}, refused_range{"po4-1", "the range runs backwards"},
        refused_range{"fcip2-1", "the range runs backwards"}, refused_range{"fcip9-1", "the range runs backwards"},
        refused_range{"Ethernet2/7.12-10", "the range runs backwards"},
        refused_range{"loopback3-1", "the range runs backwards"},
        refused_range{"mgmt0-1", "interfaces of this kind have no ranges"},
        refused_range{"if26-1/1-4", "interfaces of this kind have no ranges"},
        refused_range{"if26-32/1-4", "interfaces of this kind have no ranges"},
        refused_range{"if254-1-4", "interfaces of this kind have no ranges"},
        refused_range{"loopback0-65536", "the range is longer than 65536 interfaces"},
        refused_range{"Ethernet2/7-Ethernet2/7.5", "the ends of the range differ in more than their last number"},
        refused_range{"Ethernet2/7.100-Ethernet2/8", "the ends of the range differ in more than their last number"},
        refused_range{"Ethernet2/7.1-Ethernet2/8.9", "the ends of the range differ in more than their last number"},
        refused_range{"port-channel5-port-channel12.30", "the ends of the range differ in more than their last number"},
        refused_range{"port-channel12.30-port-channel13.31",
                      "the ends of the range differ in more than their last number"},
        refused_range{"port-channel5-port-channel1/7", "the ends of the range differ in more than their last number"}));

}  // namespace
