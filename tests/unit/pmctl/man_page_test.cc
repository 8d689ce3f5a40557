// SPDX-License-Identifier: Apache-2.0
// The documents against the command table, so that they cannot fall behind.
#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>

#include "command_table.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;

constexpr const char *man_page = DOCUMENTS "/man/pmctl.1";

std::string text_of_file(const char *path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// With '-' for "\-", and without what only parts words.
std::string without_escapes(std::string text) {
    for (size_t at; (at = text.find("\\-")) != std::string::npos;) text.replace(at, 2, "-");
    for (size_t at; (at = text.find("\\&")) != std::string::npos;) text.erase(at, 2);
    return text;
}

// The text under each heading of this macro, up to the next section or subsection.
std::map<std::string, std::string> parts_under(const std::string &macro, const std::string &text) {
    std::map<std::string, std::string> parts;
    std::string *part = nullptr;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(macro))
            part = &parts[line.substr(macro.size())];
        else if (line.starts_with(".SH") || (line.starts_with(".SS") && macro == ".SS "))
            part = nullptr;
        else if (part != nullptr)
            *part += line + "\n";
    }
    return parts;
}

class man_page_test : public testing::Test {
  protected:
    const std::string page_ = without_escapes(text_of_file(man_page));
    std::map<std::string, std::string> sections_ = parts_under(".SH ", page_);
    std::map<std::string, std::string> commands_ = parts_under(".SS ", page_);
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
        for (const auto &taken : each.takes) EXPECT_THAT(part, HasSubstr(taken.name)) << each.words;
    }
}

TEST_F(man_page_test, describes_no_command_that_does_not_exist) {
    for (const auto &[words, part] : commands_) EXPECT_NE(pmctl::find_command(words), nullptr) << words;
}

TEST_F(man_page_test, explains_every_option_with_its_values) {
    const auto expect_explained = [this](const pmctl::argument &option) {
        const std::string name = option.name;
        EXPECT_THAT(sections_["OPTIONS"], ContainsRegex("\n.TP\n[^\n]*" + name + "[^\n]*" + option.value)) << name;
        for (const char *choice : option.choices) EXPECT_THAT(sections_["OPTIONS"], HasSubstr(choice)) << name;
    };
    for (const auto &option : pmctl::global_options()) expect_explained(option);
    for (const auto &each : pmctl::all_commands())
        for (const auto &taken : each.takes)
            if (is_option(taken)) expect_explained(taken);
}

TEST_F(man_page_test, is_formatted_without_warnings) {
    FILE *groff = popen("groff -man -ww -b -z -Tutf8 " DOCUMENTS "/man/pmctl.1 2>&1", "r");
    ASSERT_NE(groff, nullptr);
    std::array<char, 4096> warnings{};
    const size_t length = fread(warnings.data(), 1, warnings.size() - 1, groff);
    EXPECT_EQ(std::string(warnings.data(), length), "");
    EXPECT_EQ(pclose(groff), 0);
}

TEST(guide, describes_every_command_and_option) {
    const std::string guide = text_of_file(DOCUMENTS "/pmctl.md");
    for (const auto &each : pmctl::all_commands()) {
        if (each.run == nullptr || is_hidden(each)) continue;
        EXPECT_THAT(guide, HasSubstr("pmctl " + std::string(each.words)));
        for (const auto &taken : each.takes)
            EXPECT_TRUE(!is_option(taken) || guide.find(taken.name) != std::string::npos) << each.words << taken.name;
    }
    for (const auto &option : pmctl::global_options()) EXPECT_THAT(guide, HasSubstr(option.name));
}

}  // namespace
