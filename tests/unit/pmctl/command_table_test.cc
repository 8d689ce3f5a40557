// SPDX-License-Identifier: Apache-2.0
#include "command_table.h"

#include <gmock/gmock.h>

#include <map>
#include <set>

namespace {

using pmctl::all_commands;
using pmctl::argument;
using pmctl::argument_content;
using pmctl::argument_kind;

std::string_view words_of(const pmctl::command *of) { return of == nullptr ? "none" : of->words; }

TEST(command_table, has_a_head_for_every_family_before_its_commands) {
    std::set<std::string_view> heads;
    for (const auto &each : all_commands()) {
        const size_t end = each.words.rfind(' ');
        EXPECT_TRUE(end == std::string_view::npos || heads.contains(each.words.substr(0, end))) << each.words;
        EXPECT_TRUE(heads.insert(each.words).second) << each.words;
    }
}

// So that an option may stand before its command.
TEST(command_table, has_one_kind_of_option_to_a_name) {
    std::map<std::string_view, argument_kind> kinds;
    for (const argument &each : pmctl::global_options()) kinds.emplace(each.name, each.kind);
    for (const auto &of : all_commands())
        for (const argument &each : of.takes)
            if (is_option(each)) {
                EXPECT_EQ(kinds.emplace(each.name, each.kind).first->second, each.kind) << each.name;
            }
}

void expect_good_argument(const argument &taken) {
    EXPECT_EQ(is_option(taken), std::string_view(taken.name).starts_with("--"));
    EXPECT_NE(std::string_view(taken.help), "");
    EXPECT_EQ(taken.kind == argument_kind::option, *taken.value != '\0');
    EXPECT_EQ(taken.content == argument_content::choice, !taken.choices.empty());
}

TEST(command_table, describes_every_argument_in_full) {
    for (const auto &of : all_commands())
        for (const argument &each : of.takes) {
            SCOPED_TRACE(std::string(of.words) + " " + each.name);
            expect_good_argument(each);
        }
    for (const argument &each : pmctl::global_options()) {
        SCOPED_TRACE(each.name);
        expect_good_argument(each);
    }
}

TEST(command_table, has_examples_of_the_command_they_stand_with) {
    for (const auto &each : all_commands()) {
        if (each.run == nullptr || is_hidden(each)) continue;
        EXPECT_THAT(each.examples, testing::StartsWith("  pmctl " + std::string(each.words))) << each.words;
        EXPECT_THAT(each.examples, testing::EndsWith("\n")) << each.words;
    }
}

TEST(command_table, finds_commands_by_all_their_words) {
    EXPECT_EQ(words_of(pmctl::find_command("show interface")), "show interface");
    EXPECT_EQ(words_of(pmctl::find_command("show interfac")), "none");
    EXPECT_EQ(words_of(pmctl::find_command("")), "none");
}

TEST(command_table, knows_the_words_that_may_follow) {
    using testing::Contains;
    using testing::Not;
    EXPECT_THAT(pmctl::words_below(""), Contains("show"));
    EXPECT_THAT(pmctl::words_below(""), Not(Contains("complete"))) << "which is hidden";
    EXPECT_THAT(pmctl::words_below("show"), Contains("interface"));
    EXPECT_THAT(pmctl::words_below("show"), Not(Contains("brief")));
    EXPECT_THAT(pmctl::words_below("show interface"), Contains("brief"));
    EXPECT_THAT(pmctl::words_below("show inter"), testing::IsEmpty());
}

}  // namespace
