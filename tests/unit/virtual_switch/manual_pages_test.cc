// SPDX-License-Identifier: Apache-2.0
// The manual pages of the switch and of its chassis file against what the program and the parser know.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <sstream>

#include "chassis/counter_table.h"
#include "chassis/port_settings.h"
#include "chassis/transceiver_keys.h"
#include "support/manual_page.h"

namespace {

using testing::HasSubstr;
using words = std::vector<std::string>;

const std::string source_folder = SOURCE_FOLDER;
const std::string switch_page = source_folder + "/docs/man/pm-virtual-switch.1";
const std::string chassis_page = source_folder + "/docs/man/port_mgr_chassis.5";

std::map<std::string, std::string> parts_of(const std::string &page, const std::string &heading) {
    return parts_under(heading, ".S", without_escapes(text_of_file(page)));
}

// What stands in double quotes.
words quoted_words(const std::string &text) {
    words found;
    for (std::string rest = after("\"", text); !rest.empty(); rest = after("\"", after("\"", rest)))
        found.push_back(up_to("\"", rest));
    return found;
}

words sorted(const auto &keys) {
    words all(keys.begin(), keys.end());
    std::ranges::sort(all);
    return all;
}

// The keys that each section takes of its own, as its reader names them.
std::map<std::string, words> own_keys_of_sections() {
    std::map<std::string, words> keys;
    const std::string mark = "const section from(\"";
    const std::string reader = text_of_file(source_folder + "/infra/virtual_switch/chassis/chassis_builder.cc");
    for (std::string rest = after(mark, reader); !rest.empty(); rest = after(mark, rest))
        keys[up_to("\"", rest)] = sorted(quoted_words(up_to("}", after("{", rest))));
    return keys;
}

TEST(chassis_page, has_every_section_with_its_own_keys) {
    std::map<std::string, words> described;
    for (const auto &[heading, part] : parts_of(chassis_page, ".SS ["))
        described[up_to("]", heading.substr(heading.find_first_not_of('[')))] = tagged_words(part);
    EXPECT_EQ(described.size(), 9u);
    EXPECT_EQ(described, own_keys_of_sections());
}

TEST(chassis_page, has_every_key_that_the_parser_knows_and_no_other) {
    std::map<std::string, std::string> sections = parts_of(chassis_page, ".SH ");
    EXPECT_EQ(tagged_words(sections["SETTINGS OF PORTS"]), sorted(virtual_switch::port_setting_keys()));
    EXPECT_EQ(tagged_words(sections["TRANSCEIVERS"]), sorted(virtual_switch::transceiver_keys()));
    EXPECT_EQ(tagged_words(sections["COUNTERS"]), sorted(virtual_switch::counter_keys));
    EXPECT_EQ(tagged_words(parts_of(chassis_page, ".SS ")["Quantities"]), sorted(virtual_switch::reading_keys));
}

struct option {
    std::string name;
    std::string value;  // empty when it takes none
};

std::vector<option> options_of_help() {
    std::array<char, 4096> help{};
    FILE *const program = popen(PM_VIRTUAL_SWITCH " --help", "r");
    const size_t length = program == nullptr ? 0 : fread(help.data(), 1, help.size(), program);
    EXPECT_TRUE(program != nullptr && pclose(program) == 0);
    std::vector<option> options;
    std::istringstream lines(std::string(help.data(), length));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  --")) continue;
        const std::string name = up_to(" ", line.substr(2));
        options.push_back({name, up_to(" ", after(name + " ", line))});
    }
    return options;
}

// How many options have a paragraph.
size_t count_tags(const std::string &section) {
    size_t tags = 0;
    for (std::string rest = after(".TP\n", section); !rest.empty(); rest = after(".TP\n", rest)) ++tags;
    return tags;
}

TEST(switch_page, explains_the_options_of_the_help_and_no_others) {
    std::map<std::string, std::string> sections = parts_of(switch_page, ".SH ");
    const std::vector<option> options = options_of_help();
    for (const auto &[name, value] : options) {
        const std::string tag = value.empty() ? ".B " + name + "\n" : ".BI " + name + " \" " + value + "\"\n";
        EXPECT_THAT(sections["OPTIONS"], HasSubstr(".TP\n" + tag));
        if (name == "--help" || name == "--version") continue;
        EXPECT_THAT(sections["SYNOPSIS"], HasSubstr("[ " + name));
    }
    EXPECT_EQ(count_tags(sections["OPTIONS"]), options.size());
    EXPECT_EQ(options.size(), 5u);
}

TEST(switch_page, has_the_usual_sections) {
    std::map<std::string, std::string> sections = parts_of(switch_page, ".SH ");
    for (const char *name :
         {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "ENVIRONMENT", "FILES", "EXAMPLES", "SEE ALSO"})
        EXPECT_NE(sections[name], "") << name;
}

TEST(switch_pages, are_formatted_without_warnings) {
    EXPECT_EQ(complaints_about(switch_page), "");
    EXPECT_EQ(complaints_about(chassis_page), "");
}

}  // namespace
