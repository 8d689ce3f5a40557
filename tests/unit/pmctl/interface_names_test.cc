// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_names.h"

#include <gtest/gtest.h>

#include "failure.h"

namespace {

using pmctl::interface_name;
using pmctl::parse_interface_ranges;

struct good_range {
    const char *typed;
    const char *first;
    const char *last;
};

class good_ranges : public testing::TestWithParam<good_range> {};

TEST_P(good_ranges, name_both_ends) {
    const auto ranges = parse_interface_ranges(GetParam().typed);
    ASSERT_EQ(ranges.size(), 1u);
    EXPECT_EQ(ranges[0].text(), GetParam().typed);
    EXPECT_EQ(interface_name(ranges[0].first()), GetParam().first);
    EXPECT_EQ(interface_name(ranges[0].last()), GetParam().last);
}

INSTANTIATE_TEST_SUITE_P(
    all, good_ranges,
    testing::Values(good_range{"fc1/1", "fc1/1", "fc1/1"}, good_range{"fc1/1-12", "fc1/1", "fc1/12"},
                    good_range{"fc1/7-7", "fc1/7", "fc1/7"}, good_range{"FC1/9-10", "fc1/9", "fc1/10"},
                    good_range{"fc16/48", "fc16/48", "fc16/48"},
                    good_range{"Ethernet2/7", "Ethernet2/7", "Ethernet2/7"},
                    good_range{"eth2/7-9", "Ethernet2/7", "Ethernet2/9"},
                    good_range{"ETHERNET2/7.100", "Ethernet2/7.100", "Ethernet2/7.100"},
                    good_range{"Ethernet2/7.100-120", "Ethernet2/7.100", "Ethernet2/7.120"},
                    good_range{"port-channel5", "port-channel5", "port-channel5"},
                    good_range{"port-channel1-4", "port-channel1", "port-channel4"},
                    good_range{"Port-Channel12.30-31", "port-channel12.30", "port-channel12.31"},
                    good_range{"po12", "port-channel12", "port-channel12"},
                    good_range{"po9-12", "port-channel9", "port-channel12"}, good_range{"fcip1-3", "fcip1", "fcip3"},
                    good_range{"mgmt0", "mgmt0", "mgmt0"}, good_range{"loopback1-2", "loopback1", "loopback2"},
                    good_range{"if11-1/2", "if11-1/2", "if11-1/2"}, good_range{"if11-1/2-4", "if11-1/2", "if11-1/4"},
                    good_range{"fc1/1-fc1/4", "fc1/1", "fc1/4"}, good_range{"fc1/1-FC1/1", "fc1/1", "fc1/1"},
                    good_range{"po1-port-channel4", "port-channel1", "port-channel4"},
                    good_range{"if11-1/2-if11-1/4", "if11-1/2", "if11-1/4"},
                    good_range{"eth2/7.100-Ethernet2/7.120", "Ethernet2/7.100", "Ethernet2/7.120"}));

class bad_names : public testing::TestWithParam<const char *> {};

TEST_P(bad_names, are_refused_by_name) {
    try {
        parse_interface_ranges(GetParam());
        FAIL() << "taken: " << GetParam();
    } catch (const pmctl::usage_error &error) {
        EXPECT_EQ(std::string(error.what()), std::string("not an interface name: ") + pmctl::shown_word(GetParam()));
    }
}

INSTANTIATE_TEST_SUITE_P(all, bad_names,
                         testing::Values("", "-", "1", "1/1", "f1/1", "fcx1", "fc", "fc1", "fc0/1", "fc1/0", "fc1/",
                                         "fc/1", "fc1/1/1", "fc1/1.2", "fc33/1", "fc1/129", "fc1/1-", "fc1/-4",
                                         "fc1/1-129", "fc1/1-0", "fc1/1-2-3", "fc1/1-x", "fc1/1-fc1/4x",
                                         "fc1/1-fc1/4-5", "fc1/1-FC", "fc1/1 - 4", "fc 1/1", "fc1/1-4294967297",
                                         "fc99999999999/1", "Ethernet2/7.0", "Ethernet2/7.4096", "Ethernet2/7.1-4096",
                                         "Ethernet2/7.1-x", "port-channel", "port-channel-4", "port-channel1024",
                                         "port-channel1-", "fcip70000", "fcip1-70000", "mgmt", "mgmt-1", "loopback",
                                         "if11", "if11-", "--all1"));

TEST(interface_lists, may_have_blanks_beside_their_commas) {
    const auto ranges = parse_interface_ranges(" fc2/3 ,  mgmt0");
    ASSERT_EQ(ranges.size(), 2u);
    EXPECT_EQ(ranges[0].text(), "fc2/3");
    EXPECT_EQ(ranges[1].text(), "mgmt0");
}

TEST(interface_lists, of_many_dashes_are_refused_at_once) {
    EXPECT_THROW(parse_interface_ranges("fc1/1" + std::string(1'000'000, '-')), pmctl::unknown_name);
}

TEST(interface_lists, come_in_the_order_typed) {
    const auto ranges = parse_interface_ranges("fc2/3,fc1/1-12,mgmt0");
    ASSERT_EQ(ranges.size(), 3u);
    EXPECT_EQ(ranges[0].text(), "fc2/3");
    EXPECT_EQ(ranges[1].text(), "fc1/1-12");
    EXPECT_EQ(interface_name(ranges[1].last()), "fc1/12");
    EXPECT_EQ(ranges[2].text(), "mgmt0");
}

struct bad_list {
    const char *typed;
    const char *message;
};

class bad_lists : public testing::TestWithParam<bad_list> {};

TEST_P(bad_lists, name_the_part_that_is_wrong) {
    try {
        parse_interface_ranges(GetParam().typed);
        FAIL() << "taken: " << GetParam().typed;
    } catch (const pmctl::usage_error &error) {
        EXPECT_STREQ(error.what(), GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(all, bad_lists,
                         testing::Values(bad_list{"fc1/1,fcx1", "not an interface name: fcx1"},
                                         bad_list{"fc1/1,", "not an interface name: \"\""},
                                         bad_list{",fc1/1", "not an interface name: \"\""},
                                         bad_list{"fc1/1,,fc1/2", "not an interface name: \"\""},
                                         bad_list{"fc1/12-1", "the range runs backwards: fc1/12-1"},
                                         bad_list{"fc2/1,po4-1", "the range runs backwards: po4-1"},
                                         bad_list{"eth1/1.9-8", "the range runs backwards: eth1/1.9-8"}));

}  // namespace
