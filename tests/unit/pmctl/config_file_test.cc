// SPDX-License-Identifier: Apache-2.0
#include "settings/config_file.h"

#include <gmock/gmock.h>

#include "failure.h"
#include "fixed_records.h"
#include "output/command_lines.h"
#include "settings/line_words.h"

namespace {

using pmctl::command_lines;
using pmctl::config_step;
using pmctl::line_words;
using pmctl::read_config;
using testing::ElementsAre;
using testing::IsEmpty;

std::string names_of(const std::vector<pmctl::interface_range> &ranges) {
    std::string names;
    for (const auto &each : ranges) names += each.text() + " ";
    return names;
}

// "3 fc1/1 : shutdown", "2 create loopback2 ".
struct step_text {
    std::string operator()(const pmctl::setting_step &step) const {
        return names_of(*step.interfaces) + ": " + setting_line(step.change);
    }
    std::string operator()(const pmctl::creation_step &step) const {
        const bool is_loopback = step.kind == pmctl::created_kind::loopback;
        return std::string(step.creates ? "create " : "delete ") + (is_loopback ? "loopback: " : "sub-interface: ") +
               names_of(step.interfaces);
    }
};

std::vector<std::string> steps_of(const std::string &text) {
    std::vector<std::string> steps;
    for (const config_step &each : read_config("lab.cfg", text))
        steps.push_back(std::to_string(each.line) + " " + std::visit(step_text{}, each.what));
    return steps;
}

std::vector<std::string> mistakes_in(const std::string &text) {
    try {
        read_config("lab.cfg", text);
        return {};
    } catch (const pmctl::usage_errors &errors) {
        return errors.lines();
    }
}

TEST(line_words, are_parted_by_blanks_unless_quoted) {
    EXPECT_THAT(line_words("  a\t b "), ElementsAre("a", "b"));
    EXPECT_THAT(line_words(""), IsEmpty());
    EXPECT_THAT(line_words(R"(a "b \"c\" \\ \x41\x7f" "")"), ElementsAre("a", "b \"c\" \\ A\x7f", ""));
    EXPECT_THAT(line_words("19\" rack"), ElementsAre("19\"", "rack"));
}

TEST(line_words, refuse_bad_quotes) {
    const auto refusal = [](const char *line) -> std::string {
        try {
            line_words(line);
            return "accepted";
        } catch (const pmctl::usage_error &error) {
            return error.what();
        }
    };
    EXPECT_EQ(refusal("a \"b"), "the closing quote is missing");
    EXPECT_EQ(refusal("\""), "the closing quote is missing");
    EXPECT_EQ(refusal("\"b\"c"), "a blank must follow the closing quote");
    EXPECT_EQ(refusal(R"("\n")"), "\\n has no meaning in quotes");
    EXPECT_EQ(refusal("\"\\"), "\\ has no meaning in quotes");
    EXPECT_EQ(refusal(R"("\x4")"), "not two hexadecimal digits behind \\x: 4\"");
    EXPECT_EQ(refusal(R"("\xgg")"), "not two hexadecimal digits behind \\x: gg");
    EXPECT_EQ(refusal(R"("\x-1")"), "not two hexadecimal digits behind \\x: -1");
    EXPECT_EQ(refusal("\"\\x"), "not two hexadecimal digits behind \\x: \"\"");
}

TEST(config_file, is_read_in_order) {
    EXPECT_THAT(steps_of("! the lab\n"
                         "\n"
                         "interface fc1/1-4, fc2/1 mgmt0\n"
                         "  no shutdown\n"
                         "speed auto max 2000\r\n"
                         "\t# a comment\n"
                         "subinterface create Ethernet4/7.100\n"
                         "interface Ethernet4/7.100\n"
                         "  description \"! # \\x21\"\n"
                         "subinterface delete Ethernet4/7.101-102,Ethernet4/7.5\n"
                         "loopback create loopback2\n"
                         "loopback delete loopback3"),
                ElementsAre("4 fc1/1-4 fc2/1 mgmt0 : no shutdown", "5 fc1/1-4 fc2/1 mgmt0 : speed auto max 2000",
                            "7 create sub-interface: Ethernet4/7.100 ", "9 Ethernet4/7.100 : description \"! # !\"",
                            "10 delete sub-interface: Ethernet4/7.101-102 Ethernet4/7.5 ",
                            "11 create loopback: loopback2 ", "12 delete loopback: loopback3 "));
    EXPECT_THAT(steps_of(""), IsEmpty());
    EXPECT_THAT(steps_of("\n \n!\n#\n"), IsEmpty());
}

TEST(config_file, takes_what_running_config_prints) {
    std::string text;
    std::vector<std::string> lines;
    for (const pm_port_info_t &port : {full_port(), worded_port(), bare_port()}) text += command_lines(port) + "\n";
    for (const config_step &each : read_config("lab.cfg", text))
        lines.push_back("  " + setting_line(std::get<pmctl::setting_step>(each.what).change) + "\n");
    std::string settings;
    for (const std::string &line : lines) settings += line;
    std::string expected;
    for (const pm_port_info_t &port : {full_port(), worded_port(), bare_port()}) {
        const std::string block = command_lines(port);
        expected += block.substr(block.find('\n') + 1);
    }
    EXPECT_EQ(settings, expected);
}

TEST(config_file, names_every_mistake_with_its_line) {
    EXPECT_THAT(mistakes_in("shutdown\n"
                            "interface\n"
                            "interface fx1/1\n"
                            "  shutdwn\n"
                            "  no shutdown\n"
                            "\n"
                            "interfce fc1/1\n"
                            "interface fc1/4-1\n"
                            "  duplex double\n"
                            "subinterface make Ethernet4/7.1\n"
                            "subinterface\n"
                            "subinterface create\n"
                            "subinterface create fc1/1\n"
                            "loopback create Ethernet4/7.2\n"
                            "  description \"open\n"
                            "show interface\n"),
                ElementsAre("lab.cfg:1: no line names the interface before this one",
                            "lab.cfg:2: interface needs names of interfaces",
                            "lab.cfg:3: not an interface name: fx1/1; did you mean fc1/1?",
                            "lab.cfg:4: not a known setting: shutdwn; did you mean shutdown?",
                            "lab.cfg:7: not a known setting: interfce; did you mean interface?",
                            "lab.cfg:8: the range runs backwards: fc1/4-1",
                            "lab.cfg:9: not a value of duplex: double; it takes half, full or auto",
                            "lab.cfg:10: not known behind subinterface: make; it takes create or delete",
                            "lab.cfg:11: not known behind subinterface: \"\"; it takes create or delete",
                            "lab.cfg:12: subinterface create needs names of interfaces",
                            "lab.cfg:13: not a sub-interface: fc1/1", "lab.cfg:14: not a loopback: Ethernet4/7.2",
                            "lab.cfg:15: the closing quote is missing",
                            "lab.cfg:16: not a known setting: show interface; did you mean interface?"));
}

TEST(config_file, is_left_at_the_hundredth_mistake) {
    std::string text;
    for (int i = 0; i < 100; ++i) text += "shutdwn\n";
    EXPECT_EQ(mistakes_in(text).size(), 100);
    const auto mistakes = mistakes_in(text + "interface fc1/1\n");
    ASSERT_EQ(mistakes.size(), 101);
    EXPECT_EQ(mistakes[99], "lab.cfg:100: not a known setting: shutdwn; did you mean shutdown?");
    EXPECT_EQ(mistakes[100], "lab.cfg: too many mistakes to read on");
}

TEST(config_file, names_bad_bytes) {
    EXPECT_THAT(mistakes_in(std::string("interface fc1/1\n  mtu 1\0\n", 25)),
                ElementsAre("lab.cfg:2: byte 0x00 in column 8 is no character of a command line"));
    EXPECT_THAT(mistakes_in("interface fc1/1\n\tdescription \xff\n\x1b\nshutdown\rno\n  description \u202e\n"),
                ElementsAre("lab.cfg:2: byte 0xff in column 14 is no character of a command line",
                            "lab.cfg:3: byte 0x1b in column 1 is no character of a command line",
                            "lab.cfg:4: byte 0x0d in column 9 is no character of a command line",
                            "lab.cfg:5: byte 0xe2 in column 15 is no character of a command line"));
    EXPECT_THAT(mistakes_in("interface fc1/1\ndescription \u00fcber\n! \x01 in a comment\n"), IsEmpty());
}

TEST(config_file, shares_the_interfaces_of_a_line_between_its_settings) {
    const auto steps = read_config("lab.cfg", "interface fc1/1\nshutdown\nspeed auto\n");
    ASSERT_EQ(steps.size(), 2u);
    EXPECT_EQ(std::get<pmctl::setting_step>(steps[0].what).interfaces,
              std::get<pmctl::setting_step>(steps[1].what).interfaces);
}

}  // namespace
