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

TEST(switch_page, explains_the_options_of_the_help_and_no_others) {
    FILE *const program = popen(PM_VIRTUAL_SWITCH " --help", "r");
    ASSERT_NE(program, nullptr);
    std::array<char, 4096> help{};
    const size_t length = fread(help.data(), 1, help.size(), program);
    EXPECT_EQ(pclose(program), 0);

    std::map<std::string, std::string> sections = parts_of(switch_page, ".SH ");
    words options;
    std::istringstream lines(std::string(help.data(), length));
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  --")) continue;
        const std::string option = up_to(" ", line.substr(2));
        const std::string value = up_to(" ", line.substr(2 + option.size() + 1));
        options.push_back(option);
        EXPECT_THAT(sections["OPTIONS"],
                    HasSubstr(".B" + (value.empty() ? " " + option : "I " + option + " \" " + value)));
    }
    words described;
    for (std::string rest = after("\n.B", sections["OPTIONS"]); !rest.empty(); rest = after("\n.B", rest))
        if (const std::string tag = after(" ", up_to("\n", rest)); tag.starts_with("--"))
            described.push_back(up_to(" ", tag));
    EXPECT_EQ(described, sorted(options));
    for (const std::string &option : options) {
        if (option == "--help" || option == "--version") continue;
        EXPECT_THAT(sections["SYNOPSIS"], HasSubstr("[ " + option)) << option;
    }
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
