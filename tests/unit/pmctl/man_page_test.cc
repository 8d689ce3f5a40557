// SPDX-License-Identifier: Apache-2.0
// The documents against the command table, so that they cannot fall behind.
#include <gmock/gmock.h>

#include <iterator>
#include <map>
#include <sstream>

#include "command_line/help_text.h"
#include "command_table.h"
#include "support/manual_page.h"

namespace {

using testing::Contains;
using testing::HasSubstr;

constexpr const char *man_page = DOCUMENTS "/man/pmctl.1";

// The tagged paragraph of a section whose tag names this option; or nothing.
std::string entry(const std::string &section, const std::string &option) {
    for (std::string rest = after(".TP\n", section); !rest.empty(); rest = after(".TP\n", rest)) {
        const std::string part = up_to(".TP\n", up_to(".PP\n", rest));
        if (up_to("\n", part).find(option) != std::string::npos) return part;
    }
    return {};
}

// Its words without the marks around them.
std::vector<std::string> words_of(std::string text) {
    for (char &each : text)
        if (std::string_view("`:;,.").find(each) != std::string_view::npos) each = ' ';
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

class man_page_test : public testing::Test {
  protected:
    const std::string page_ = without_escapes(text_of_file(man_page));
    std::map<std::string, std::string> sections_ = parts_under(".SH ", ".SH ", page_);
    std::map<std::string, std::string> commands_ = parts_under(".SS ", ".SH ", page_);
};

TEST_F(man_page_test, has_the_usual_sections) {
    for (const char *name : {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "OPTIONS", "EXIT STATUS", "ENVIRONMENT",
                             "FILES", "EXAMPLES", "SEE ALSO"})
        EXPECT_NE(sections_[name], "") << name;
}

TEST_F(man_page_test, describes_every_command_with_its_arguments) {
    for (const auto &each : pmctl::all_commands()) {
        if (is_hidden(each)) continue;
        const std::string part = commands_[std::string(each.words)];
        EXPECT_NE(part, "") << "no subsection: " << each.words;
        const std::string synopsis = up_to(".PP\n", part);
        for (const auto &taken : each.takes) EXPECT_THAT(synopsis, HasSubstr(taken.name)) << each.words;
    }
}

TEST_F(man_page_test, describes_no_command_that_does_not_exist) {
    for (const auto &[words, part] : commands_) EXPECT_NE(pmctl::find_command(words), nullptr) << words;
}

TEST_F(man_page_test, explains_every_option_with_its_values) {
    const auto expect_explained = [this](const pmctl::argument &option) {
        const std::string name = option.name;
        const std::string part = entry(sections_["OPTIONS"], name);
        EXPECT_THAT(up_to("\n", part), HasSubstr(option.value)) << name;
        for (const char *choice : option.choices) EXPECT_THAT(words_of(part), Contains(choice)) << name;
    };
    for (const auto &option : pmctl::global_options()) expect_explained(option);
    for (const auto &each : pmctl::all_commands())
        for (const auto &taken : each.takes)
            if (is_option(taken)) expect_explained(taken);
}

TEST_F(man_page_test, is_formatted_without_warnings) { EXPECT_EQ(complaints_about(man_page), ""); }

class guide : public testing::Test {
  protected:
    const std::string text_ = text_of_file(DOCUMENTS "/pmctl.md");
    std::map<std::string, std::string> sections_ = parts_under("## ", "## ", text_);
};

// In a section of its own, which begins with its usage; help is explained before all others.
TEST_F(guide, describes_every_command) {
    for (const auto &each : pmctl::all_commands()) {
        if (each.run == nullptr || is_hidden(each)) continue;
        const std::string usage = after("Usage: ", up_to("\n", pmctl::help_text(&each)));
        const std::string name = "pmctl " + std::string(each.words);
        const std::string &part = each.words == "help" ? up_to("\n## ", text_) : sections_[name];
        EXPECT_THAT(part, HasSubstr("\n" + usage + "\n")) << name;
    }
}

TEST_F(guide, explains_the_options_of_every_command) {
    const std::string section = sections_["Options of every command"];
    for (const auto &option : pmctl::global_options()) {
        const std::string row = up_to("\n", after("\n| `" + std::string(option.name), section));
        EXPECT_NE(row, "") << option.name;
        for (const char *choice : option.choices) EXPECT_THAT(words_of(row), Contains(choice)) << option.name;
    }
}

}  // namespace
