// SPDX-License-Identifier: Apache-2.0
#include "command_line.h"

#include <gmock/gmock.h>

#include "failure.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

pmctl::invocation parse(std::vector<const char *> words) {
    words.insert(words.begin(), "pmctl");
    return pmctl::parse_command_line(static_cast<int>(words.size()), words.data());
}

std::string refusal_of(std::vector<const char *> words) {
    try {
        parse(std::move(words));
        return "accepted";
    } catch (const pmctl::usage_error &error) {
        return error.what();
    }
}

TEST(command_line, finds_the_command_and_its_arguments) {
    const auto call = parse({"show", "interface", "fc1/1-4", "mgmt0", "--json"});
    ASSERT_NE(call.what, nullptr);
    EXPECT_EQ(call.what->words, "show interface");
    EXPECT_THAT(call.given.words("NAME"), ElementsAre("fc1/1-4", "mgmt0"));
    EXPECT_TRUE(call.given.has("--json"));
    EXPECT_FALSE(call.given.has("--all"));
    EXPECT_FALSE(call.verbose);
}

TEST(command_line, knows_a_command_inside_another) {
    EXPECT_EQ(parse({"show", "interface", "brief"}).what->words, "show interface brief");
    EXPECT_EQ(parse({"show", "interface"}).what->words, "show interface");
}

TEST(command_line, takes_a_flag_wherever_it_stands) {
    EXPECT_TRUE(parse({"show", "interface", "brief", "--json"}).given.has("--json"));
    EXPECT_TRUE(parse({"show", "interface", "--json", "brief"}).given.has("--json"));
    EXPECT_TRUE(parse({"--verbose", "show", "interface"}).verbose);
    EXPECT_TRUE(parse({"show", "interface", "brief", "--verbose"}).verbose);
}

TEST(command_line, refuses_what_makes_no_command) {
    EXPECT_EQ(refusal_of({}), "the command is not complete: see pmctl --help");
    EXPECT_EQ(refusal_of({"show"}), "the command is not complete: see pmctl --help");
    EXPECT_EQ(refusal_of({"shw"}), "not a known word here: shw");
    EXPECT_EQ(refusal_of({"show", "interfaces"}), "not a known word here: interfaces");
    EXPECT_EQ(refusal_of({"show", "interface", "--jsn"}), "not a known word here: --jsn");
    EXPECT_EQ(refusal_of({"show", "interface", "brief", "--all"}), "show interface brief does not take: --all");
    EXPECT_EQ(refusal_of({"show", "interface", "brief", "fc1/1"}), "show interface brief does not take: fc1/1");
    EXPECT_EQ(refusal_of({"show", "interface", "fc1/1", "brief"}), "show interface brief does not take: fc1/1");
}

TEST(command_line, answers_for_help_and_version) {
    const auto version = parse({"--version"});
    EXPECT_EQ(version.what, nullptr);
    EXPECT_EQ(version.text, "pmctl 0.1.0\n");
    EXPECT_THAT(parse({"--help"}).text,
                AllOf(HasSubstr("show interface brief"), HasSubstr("Examples:"), HasSubstr("--version")));
    EXPECT_THAT(parse({"show", "interface", "--help"}).text,
                AllOf(HasSubstr("--all"), HasSubstr("Examples:\n  pmctl show interface fc1/1\n")));
    EXPECT_THAT(parse({"show", "interface", "brief", "-h"}).text, HasSubstr("  pmctl show interface brief --json\n"));
}

}  // namespace
