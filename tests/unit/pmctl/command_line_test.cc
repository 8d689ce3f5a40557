// SPDX-License-Identifier: Apache-2.0
#include "command_line/command_line.h"

#include <gmock/gmock.h>

#include "failure.h"

namespace {

using testing::ElementsAre;

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
    EXPECT_FALSE(call.given.has("--verbose"));
}

TEST(command_line, knows_a_command_inside_another) {
    EXPECT_EQ(parse({"show", "interface", "brief"}).what->words, "show interface brief");
    EXPECT_EQ(parse({"show", "interface"}).what->words, "show interface");
}

TEST(command_line, takes_a_flag_wherever_it_stands) {
    EXPECT_TRUE(parse({"show", "interface", "brief", "--json"}).given.has("--json"));
    EXPECT_TRUE(parse({"show", "interface", "--json", "brief"}).given.has("--json"));
    EXPECT_TRUE(parse({"--verbose", "show", "interface"}).given.has("--verbose"));
    EXPECT_TRUE(parse({"show", "interface", "brief", "--verbose"}).given.has("--verbose"));
}

TEST(command_line, takes_every_option_before_its_command) {
    const auto call = parse({"--json", "show", "interface", "brief"});
    EXPECT_EQ(call.what->words, "show interface brief");
    EXPECT_TRUE(call.given.has("--json"));
}

TEST(command_line, takes_the_word_of_an_option_in_both_forms) {
    EXPECT_EQ(parse({"--color", "never", "show", "interface"}).given.word("--color"), "never");
    EXPECT_EQ(parse({"show", "interface", "--color=never"}).given.word("--color"), "never");
    EXPECT_EQ(parse({"show", "interface", "--color", "brief"}).what->words, "show interface");
}

TEST(command_line, takes_words_as_they_are_after_a_separator) {
    const auto call = parse({"show", "interface", "--", "brief", "--json", "--"});
    EXPECT_EQ(call.what->words, "show interface");
    EXPECT_THAT(call.given.words("NAME"), ElementsAre("brief", "--json", "--"));
    EXPECT_FALSE(call.given.has("--json"));
}

TEST(command_line, takes_words_before_and_after_a_separator) {
    EXPECT_THAT(parse({"show", "interface", "fc1/1", "--", "fc1/2", "-h"}).given.words("NAME"),
                ElementsAre("fc1/1", "fc1/2", "-h"));
    EXPECT_EQ(parse({"show", "interface", "--"}).what->words, "show interface");
}

TEST(command_line, takes_odd_words_as_they_are) {
    EXPECT_THAT(parse({"show", "interface", "[fc1/1,fc1/2]", "[]", "%%", "{}", ""}).given.words("NAME"),
                ElementsAre("[fc1/1,fc1/2]", "[]", "%%", "{}", ""));
    EXPECT_THAT(parse({"show", "interface", "++"}).given.words("NAME"), ElementsAre("++"));
}

TEST(command_line, takes_a_dash_and_a_negative_number_for_words) {
    EXPECT_THAT(parse({"show", "interface", "-", "-4"}).given.words("NAME"), ElementsAre("-", "-4"));
}

TEST(command_line, parts_names_from_the_setting) {
    const auto given = [](std::vector<const char *> words) {
        words.insert(words.begin(), {"config", "interface"});
        const auto call = parse(std::move(words));
        return std::pair{call.given.words("RANGE"), call.given.words("SETTING")};
    };
    using strings = std::vector<std::string>;
    EXPECT_EQ(given({"fc1/1", "shutdown"}), (std::pair{strings{"fc1/1"}, strings{"shutdown"}}));
    EXPECT_EQ(given({"fc1/1", ",", "fc1/2", "mgmt0", "speed", "auto", "10", "100"}),
              (std::pair{strings{"fc1/1", ",", "fc1/2", "mgmt0"}, strings{"speed", "auto", "10", "100"}}));
    EXPECT_EQ(given({"shutdown", "shutdown"}), (std::pair{strings{"shutdown"}, strings{"shutdown"}}));
    EXPECT_EQ(given({"fc1/1,", "shutdown", "no"}), (std::pair{strings{"fc1/1,", "shutdown"}, strings{"no"}}));
    EXPECT_EQ(given({"fc1/1", "description", "show", "interface", "config", "brief"}),
              (std::pair{strings{"fc1/1"}, strings{"description", "show", "interface", "config", "brief"}}));
    EXPECT_EQ(given({"fc1/1", "description", "++", "x", "++", "--", "--json"}),
              (std::pair{strings{"fc1/1"}, strings{"description", "++", "x", "++", "--json"}}));
}

TEST(command_line, fills_places_in_their_order) {
    const auto call = parse({"show", "module", "3", "--json", "interfaces"});
    EXPECT_EQ(call.what->words, "show module");
    EXPECT_THAT(call.given.words("N"), ElementsAre("3"));
    EXPECT_THAT(call.given.words("interfaces"), ElementsAre("interfaces"));
    EXPECT_THAT(parse({"config", "-"}).given.words("FILE"), ElementsAre("-"));
    EXPECT_THAT(parse({"config", "-", "--verbose"}).given.words("FILE"), ElementsAre("-"));
    EXPECT_THAT(parse({"config", "--", "interface"}).given.words("FILE"), ElementsAre("interface"));
}

struct bad_line {
    std::vector<const char *> words;
    const char *refusal;
};

class bad_lines : public testing::TestWithParam<bad_line> {};

TEST_P(bad_lines, are_refused_in_words) { EXPECT_EQ(refusal_of(GetParam().words), GetParam().refusal); }

INSTANTIATE_TEST_SUITE_P(
    all, bad_lines,
    testing::Values(
        bad_line{{}, "the command is not complete: see pmctl --help"},
        bad_line{{"show"}, "the command is not complete: see pmctl show --help"},
        bad_line{{"show", "--json"}, "the command is not complete: see pmctl show --help"},
        bad_line{{"shw"}, "not a known word here: shw; did you mean show?"},
        bad_line{{"xyzzy"}, "not a known word here: xyzzy; see pmctl --help"},
        bad_line{{""}, "not a known word here: \"\"; see pmctl --help"},
        bad_line{{"show", "interfaces"}, "not a known word here: interfaces; did you mean interface?"},
        bad_line{{"show", "xyzzy"}, "not a known word here: xyzzy; see pmctl show --help"},
        bad_line{{"show", "interface", "--jsn"}, "not a known word here: --jsn; did you mean --json?"},
        bad_line{{"show", "interface", "--xyzzy"}, "not a known word here: --xyzzy; see pmctl show interface --help"},
        bad_line{{"show", "interface", "-j"}, "not a known word here: -j; see pmctl show interface --help"},
        bad_line{{"show", "interface", "--json=1"}, "--json takes no value: --json=1"},
        bad_line{{"show", "interface", "--json="}, "--json takes no value: --json="},
        bad_line{{"show", "interface", "--json=true"}, "--json takes no value: --json=true"},
        bad_line{{"--help=true"}, "--help takes no value: --help=true"},
        bad_line{{"show", "interface", "-hx"}, "not a known word here: -hx; see pmctl show interface --help"},
        bad_line{{"shwo", "--help"}, "not a known word here: shwo; did you mean show?"},
        bad_line{{"--version", "xyzzy"}, "not a known word here: xyzzy; see pmctl --help"},
        bad_line{{"show", "--", "interface"}, "not a known word here: interface; see pmctl show --help"},
        bad_line{{"show", "interface", "brief", "--", "++"}, "show interface brief does not take: ++"},
        bad_line{{"show", "interface", "++", "brief"}, "show interface brief does not take: ++"},
        bad_line{{"show", "interface", "brief", ""}, "show interface brief does not take: \"\""},
        bad_line{{"show", "interface", "--color"}, "--color needs WHEN"},
        bad_line{{"show", "interface", "--color="}, "--color needs WHEN"},
        bad_line{{"--color", "auto", "--color=auto", "show"}, "--color is given twice"},
        bad_line{{"config"}, "config needs FILE; see pmctl config --help"},
        bad_line{{"config", "lab.cfg", "fc1/1"}, "not a known word here: fc1/1; see pmctl config --help"},
        bad_line{{"config", "interfce", "fc1/1", "shutdown"},
                 "not a known word here: interfce; did you mean "
                 "interface?"},
        bad_line{{"config", "--", "-", "-"}, "not a known word here: -; see pmctl config --help"},
        bad_line{{"config", "interface"}, "config interface needs RANGE; see pmctl config interface --help"},
        bad_line{{"config", "interface", "fc1/1"}, "config interface needs SETTING; see pmctl config interface --help"},
        bad_line{{"config", "interface", "fc1/1,", "shutdown"},
                 "not an interface name: shutdown; see pmctl config interface --help"},
        bad_line{{"config", "interface", "shutdown"},
                 "not an interface name: shutdown; see pmctl config interface --help"},
        bad_line{{"show", "module", "interfaces"}, "not the number of a module, from 1 to 255: interfaces"},
        bad_line{{"show", "module", "resource"},
                 "not the number of a module, from 1 to 255: resource; did you mean resources?"},
        bad_line{{"config", "subinterface"}, "the command is not complete: see pmctl config subinterface --help"},
        bad_line{{"config", "loopback", "create"},
                 "config loopback create needs RANGE; see pmctl config loopback "
                 "create --help"},
        bad_line{{"show", "module"}, "show module needs N; see pmctl show module --help"},
        bad_line{{"show", "module", "3"}, "show module needs interfaces; see pmctl show module --help"},
        bad_line{{"show", "module", "3", "interfaces", "4"}, "not a known word here: 4; see pmctl show module --help"},
        bad_line{{"show", "interface", "brief", "--all"}, "show interface brief does not take: --all"},
        bad_line{{"show", "interface", "brief", "fc1/1"}, "show interface brief does not take: fc1/1"},
        bad_line{{"show", "interface", "fc1/1", "brief"}, "show interface brief does not take: fc1/1"}));

TEST(command_line, answers_for_version) {
    const auto version = parse({"--version"});
    EXPECT_EQ(version.what, nullptr);
    EXPECT_EQ(version.text, "pmctl 0.1.0\n");
}

}  // namespace
