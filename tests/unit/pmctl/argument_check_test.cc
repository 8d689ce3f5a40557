// SPDX-License-Identifier: Apache-2.0
#include "command_line/argument_check.h"

#include <gtest/gtest.h>

#include "command_table.h"
#include "failure.h"

namespace {

using pmctl::arguments;

template <typename Check>
std::string refusal_of(const Check &check) {
    try {
        check();
        return "accepted";
    } catch (const pmctl::usage_error &error) {
        return error.what();
    }
}

struct typed_name {
    const char *typed;
    const char *refusal;
};

class typed_names : public testing::TestWithParam<typed_name> {};

TEST_P(typed_names, are_refused_with_what_may_have_been_meant) {
    arguments given;
    given.add("NAME", "fc1/1");
    given.add("NAME", GetParam().typed);
    EXPECT_EQ(refusal_of([&given] { check_words(*pmctl::find_command("show interface"), given); }), GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    all, typed_names,
    testing::Values(typed_name{"fc1/1-4,mgmt0", "accepted"}, typed_name{"FC1/1", "accepted"},
                    typed_name{"brif", "not an interface name: brif; did you mean brief?"},
                    typed_name{"ehternet2/1", "not an interface name: ehternet2/1; did you mean Ethernet2/1?"},
                    typed_name{"fx1/1", "not an interface name: fx1/1; did you mean fc1/1?"},
                    typed_name{"mgmt0,fx1/1-4", "not an interface name: fx1/1-4; did you mean fc1/1-4?"},
                    typed_name{"port-chanel5", "not an interface name: port-chanel5; did you mean port-channel5?"},
                    typed_name{"port_channel5.30",
                               "not an interface name: port_channel5.30; did you mean port-channel5.30?"},
                    typed_name{"eht2/7", "not an interface name: eht2/7; did you mean eth2/7?"},
                    typed_name{"loopbak1", "not an interface name: loopbak1; did you mean loopback1?"},
                    // a kind that is near, of which there is no such interface
                    typed_name{"fcx1", "not an interface name: fcx1; see pmctl show interface --help"},
                    typed_name{"fc1/", "not an interface name: fc1/; see pmctl show interface --help"},
                    typed_name{"xyzzy", "not an interface name: xyzzy; see pmctl show interface --help"},
                    typed_name{"", "not an interface name: \"\"; see pmctl show interface --help"},
                    typed_name{"fc1/1, mgmt0 , fc2/1", "accepted"},
                    typed_name{"fc1/1,", "not an interface name: \"\"; see pmctl show interface --help"},
                    typed_name{"fc1/12-1", "the range runs backwards: fc1/12-1"}));

TEST(typed_lists, may_be_parted_at_commas) {
    const auto refusal = [](const std::vector<const char *> &words) {
        arguments given;
        for (const char *word : words) given.add("NAME", word);
        return refusal_of([&given] { check_words(*pmctl::find_command("show interface"), given); });
    };
    EXPECT_EQ(refusal({"fc1/1,", "fc1/2", ",mgmt0", ",", "fc1/3"}), "accepted");
    EXPECT_EQ(refusal({"fc1/1,", "fx1/2"}), "not an interface name: fx1/2; did you mean fc1/2?");
    EXPECT_EQ(refusal({"fc1/1,", ",fc1/2"}), "not an interface name: \"\"; see pmctl show interface --help");
}

TEST(choices, are_held_to) {
    const auto refusal = [](const char *typed) {
        arguments given;
        given.add("--color", typed);
        return refusal_of([&given] { check_words(*pmctl::find_command("show interface"), given); });
    };
    EXPECT_EQ(refusal("always"), "accepted");
    EXPECT_EQ(refusal("alwys"), "not a value of --color: alwys; did you mean always?");
    EXPECT_EQ(refusal("Always"), "not a value of --color: Always; did you mean always?");
    EXPECT_EQ(refusal("blue"), "not a value of --color: blue; it takes auto, always or never");
    EXPECT_EQ(refusal(""), "not a value of --color: \"\"; it takes auto, always or never");
}

TEST(seconds, are_decimal_and_within_a_day) {
    EXPECT_EQ(pmctl::parse_seconds("2"), 2);
    EXPECT_EQ(pmctl::parse_seconds("0.1"), 0.1);
    EXPECT_EQ(pmctl::parse_seconds("1.25"), 1.25);
    EXPECT_EQ(pmctl::parse_seconds("86400"), 86400);
    for (const char *bad : {"", " ", "0", "0.09", "-1", "+1", "86400.1", "1e2", "1s", " 1", "1 ", "1,5", "0x10", "inf",
                            "nan", "two", "99999999999999999999999999"})
        EXPECT_EQ(refusal_of([bad] { pmctl::parse_seconds(bad); }),
                  "not a number of seconds from 0.1 to 86400: " + pmctl::shown_word(bad));
}

}  // namespace
