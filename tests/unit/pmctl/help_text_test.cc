// SPDX-License-Identifier: Apache-2.0
#include "command_line/help_text.h"

#include <gmock/gmock.h>

#include <sstream>

#include "command_line/command_line.h"
#include "command_table.h"
#include "outcome.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string output_of(std::vector<const char *> words) {
    words.insert(words.begin(), "pmctl");
    return pmctl::carry_out(pmctl::parse_command_line(static_cast<int>(words.size()), words.data())).output;
}

TEST(help_text, has_a_form) {
    constexpr const char *choices[] = {"slow", "fast"};
    const pmctl::argument taken[] = {
        {"MORE", pmctl::argument_kind::words,
         "Words of which there may be so many that what they are for does not fit on one line of the help"},
        {"--speed", pmctl::argument_kind::option, "How fast it is", pmctl::argument_content::choice, choices, "SPEED"},
        {"--json", pmctl::argument_kind::flag, "Print JSON"}};
    const pmctl::command paint{"paint", "Paint something", taken, "  pmctl paint x\n",
                               [](const pmctl::arguments &) { return pmctl::command_result{}; }};
    EXPECT_THAT(pmctl::help_text(&paint), StartsWith(R"(Usage: pmctl paint [MORE...] [--speed SPEED] [--json]

Paint something

Arguments:
  MORE...  Words of which there may be so many that what they are for does not
           fit on one line of the help

Options:
  --speed SPEED  How fast it is
  --json         Print JSON

Options of every command:
  --color WHEN  )"));
}

TEST(help_text, says_all_of_every_command) {
    for (const auto &each : pmctl::all_commands()) {
        SCOPED_TRACE(each.words);
        if (is_hidden(each)) continue;
        const std::string text = pmctl::help_text(&each);
        EXPECT_THAT(text, AllOf(StartsWith("Usage: pmctl " + std::string(each.words)), HasSubstr(each.summary),
                                HasSubstr("Examples:\n"), HasSubstr(each.examples)));
        for (const auto &taken : each.takes) EXPECT_THAT(text, HasSubstr("\n  " + std::string(taken.name)));
    }
}

TEST(help_text, lists_the_settings) {
    const std::string text = pmctl::help_text(pmctl::find_command("config interface"));
    EXPECT_THAT(text, StartsWith("Usage: pmctl config interface RANGE... SETTING...\n"));
    EXPECT_THAT(text, HasSubstr("\n  no shutdown            takes no value\n"));
    EXPECT_THAT(text, HasSubstr("\n  duplex                 half, full or auto\n"));
    EXPECT_THAT(text, HasSubstr("\n  description            a text of at most 80 bytes\n"));
}

TEST(help_text, fits_eighty_columns) {
    for (const auto &each : pmctl::all_commands()) {
        std::istringstream lines(pmctl::help_text(&each));
        for (std::string line; std::getline(lines, line);)
            EXPECT_TRUE(line.size() <= 80 || line.starts_with("Usage:")) << line;
    }
}

TEST(help_text, lists_the_commands_of_a_family) {
    EXPECT_THAT(pmctl::help_text(pmctl::find_command("show")),
                AllOf(StartsWith("Usage: pmctl show COMMAND...\n"), HasSubstr("\n  show interface brief  "),
                      HasSubstr("\n  pmctl show interface brief\n"), Not(HasSubstr("\n  help "))));
    EXPECT_THAT(pmctl::help_text(nullptr), AllOf(StartsWith("Usage: pmctl COMMAND...\n"), HasSubstr("\n  help "),
                                                 HasSubstr("\n  show interface brief  "), Not(HasSubstr("complete"))));
}

TEST(help_text, is_what_every_way_of_asking_gives) {
    const std::string brief = pmctl::help_text(pmctl::find_command("show interface brief"));
    EXPECT_EQ(output_of({"show", "interface", "brief", "--help"}), brief);
    EXPECT_EQ(output_of({"show", "interface", "brief", "-h"}), brief);
    EXPECT_EQ(output_of({"--help", "show", "interface", "brief"}), brief);
    EXPECT_EQ(output_of({"help", "show", "interface", "brief"}), brief);
    EXPECT_EQ(output_of({"show", "--help"}), pmctl::help_text(pmctl::find_command("show")));
    EXPECT_EQ(output_of({"--help"}), pmctl::help_text(nullptr));
    EXPECT_EQ(output_of({"help"}), pmctl::help_text(nullptr));
}

TEST(help_text, is_of_commands_only) {
    EXPECT_EQ(output_of({"help", "shwo"}), "");
    EXPECT_EQ(output_of({"help", "show", "interface", "fc1/1"}), "");
    EXPECT_EQ(output_of({"help", "--", "--json", "show", "interface"}), "");
}

}  // namespace
