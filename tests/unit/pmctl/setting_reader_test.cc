// SPDX-License-Identifier: Apache-2.0
#include "settings/setting_reader.h"

#include <gmock/gmock.h>

#include <set>

#include "failure.h"
#include "fixed_records.h"
#include "output/command_lines.h"
#include "port_mgr/config_attribute.h"
#include "settings/line_words.h"

namespace {

using pmctl::line_words;
using pmctl::read_setting;
using pmctl::setting_line;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

std::string refusal_of(const std::string &line, const std::vector<std::string> &beside = {}) {
    try {
        read_setting(line_words(line), beside);
        return "accepted";
    } catch (const pmctl::usage_error &error) {
        return error.what();
    }
}

struct both_ways {
    const char *line;
    uint32_t attribute;
    uint32_t number;
    uint8_t width;
};

class settings : public testing::TestWithParam<both_ways> {};

TEST_P(settings, are_read_and_written) {
    const auto change = read_setting(line_words(GetParam().line));
    EXPECT_EQ(change.what->attribute, GetParam().attribute);
    EXPECT_EQ(change.number, GetParam().number);
    EXPECT_EQ(static_cast<uint8_t>(change.what->width), GetParam().width);
    EXPECT_EQ(setting_line(change), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    all, settings,
    testing::Values(
        both_ways{"no shutdown", 1, 1, 1}, both_ways{"shutdown", 1, 2, 1}, both_ways{"switchport mode auto", 2, 1, 4},
        both_ways{"switchport mode SD", 2, 2, 4}, both_ways{"switchport mode E", 2, 4, 4},
        both_ways{"switchport mode TE", 2, 8, 4}, both_ways{"switchport mode TL", 2, 0x10, 4},
        both_ways{"switchport mode F", 2, 0x20, 4}, both_ways{"switchport mode FL", 2, 0x40, 4},
        both_ways{"switchport mode 128", 2, 0x80, 4}, both_ways{"switchport mode 256", 2, 0x100, 4},
        both_ways{"switchport mode IPS", 2, 0x200, 4}, both_ways{"switchport mode ISCSI", 2, 0x400, 4},
        both_ways{"switchport mode NP", 2, 0x4000, 4}, both_ways{"switchport mode ST", 2, 0x8000, 4},
        both_ways{"switchport mode FA", 2, 0x80000, 4}, both_ways{"switchport mode trunk", 2, 0x100000, 4},
        both_ways{"switchport mode private-vlan host", 2, 0x400000, 4},
        both_ways{"switchport mode private-vlan promiscuous", 2, 0x800000, 4},
        both_ways{"switchport mode TF", 2, 0x4000000, 4}, both_ways{"switchport mode TNP", 2, 0x8000000, 4},
        both_ways{"switchport mode FX", 2, 0x60, 4}, both_ways{"switchport mode ALL", 2, 0xffff, 4},
        both_ways{"switchport mode Not E", 2, 0xfffb, 4}, both_ways{"switchport mode Not FL", 2, 0xfe3f, 4},
        both_ways{"switchport mode 4294967295", 2, 0xffffffff, 4}, both_ways{"switchport trunk mode off", 4, 1, 1},
        both_ways{"switchport trunk mode on", 4, 2, 1}, both_ways{"switchport trunk mode auto", 4, 3, 1},
        both_ways{"speed auto", 3, 0, 4}, both_ways{"speed auto max 2000", 3, 1, 4},
        both_ways{"speed auto max 4000", 3, 2, 4}, both_ways{"speed auto 10 100", 3, 110, 4},
        both_ways{"speed 10", 3, 10, 4}, both_ways{"speed 100", 3, 100, 4}, both_ways{"speed 1000", 3, 1000, 4},
        both_ways{"speed 2000", 3, 2000, 4}, both_ways{"speed 4000", 3, 4000, 4}, both_ways{"speed 8000", 3, 8000, 4},
        both_ways{"speed 10000", 3, 10000, 4}, both_ways{"speed 16000", 3, 16000, 4},
        both_ways{"rate-mode dedicated", 12, 1, 1}, both_ways{"rate-mode shared", 12, 2, 1},
        both_ways{"duplex half", 17, 1, 1}, both_ways{"duplex full", 17, 2, 1}, both_ways{"duplex auto", 17, 3, 1},
        both_ways{"auto-negotiation on", 23, 1, 4}, both_ways{"auto-negotiation off", 23, 2, 4},
        both_ways{"beacon on", 5, 1, 1}, both_ways{"beacon off", 5, 2, 1},
        both_ways{"receive-buffer-size 65535", 7, 65535, 2}, both_ways{"receive-bb-credit default", 8, 0, 4},
        both_ways{"receive-bb-credit 4294967295", 8, 0xffffffff, 4}, both_ways{"port-vsan 4093", 15, 4093, 2},
        both_ways{"mtu 9216", 29, 9216, 4}, both_ways{"bandwidth 4294967295", 36, 0xffffffff, 4},
        both_ways{"no bandwidth", 36, 0, 4}, both_ways{"down-on-link-failure on", 44, 3, 1},
        both_ways{"down-on-link-failure off", 44, 4, 1}));

class texts : public testing::TestWithParam<std::pair<const char *, const char *>> {};

TEST_P(texts, are_read_and_written) {
    const auto [line, text] = GetParam();
    const auto change = read_setting(line_words(line));
    EXPECT_EQ(change.what->attribute, PM_ATTR_DESCRIPTION);
    EXPECT_EQ(change.text, text);
    EXPECT_EQ(setting_line(change), line);
}

INSTANTIATE_TEST_SUITE_P(all, texts,
                         testing::Values(std::pair{"no description", ""}, std::pair{"description \"uplink\"", "uplink"},
                                         std::pair{"description \"a  b\"", "a  b"},
                                         std::pair{"description \" - \"", " - "},
                                         std::pair{R"(description "\"\\\x0a\xff")", "\"\\\n\xff"},
                                         std::pair{"description \"\u00fcber\"", "\u00fcber"},
                                         std::pair{"description \"no\"", "no"}));

TEST(settings_read, take_a_text_in_several_words_or_none) {
    EXPECT_EQ(read_setting(line_words("description uplink to  core")).text, "uplink to core");
    EXPECT_EQ(read_setting(line_words("description \"\"")).text, "");
    EXPECT_EQ(refusal_of("description " + std::string(80, 'x')), "accepted");
}

struct bad_setting {
    const char *line;
    const char *refusal;
};

class bad_settings : public testing::TestWithParam<bad_setting> {};

TEST_P(bad_settings, are_named) { EXPECT_EQ(refusal_of(GetParam().line), GetParam().refusal); }

INSTANTIATE_TEST_SUITE_P(
    all, bad_settings,
    testing::Values(
        bad_setting{"shutdwn", "not a known setting: shutdwn; did you mean shutdown?"},
        bad_setting{"xyzzy", "not a known setting: xyzzy; see pmctl config interface --help"},
        bad_setting{"\"\"", "not a known setting: \"\"; see pmctl config interface --help"},
        bad_setting{"switchport",
                    "not a known setting: switchport; did you mean switchport mode or switchport trunk "
                    "mode?"},
        bad_setting{"switchport trnk mode on",
                    "not a known setting: switchport trnk mode; did you mean switchport trunk mode?"},
        bad_setting{"no", "not a known setting: no; did you mean no shutdown, no description or no bandwidth?"},
        bad_setting{"no bandwith", "not a known setting: no bandwith; did you mean no bandwidth?"},
        bad_setting{"no speed", "not a known setting: no speed; did you mean speed?"},
        bad_setting{"shutdown now", "shutdown takes no value: now"},
        bad_setting{"no shutdown now", "no shutdown takes no value: now"},
        bad_setting{"no description x", "no description takes no value: x"},
        bad_setting{"no bandwidth 0", "no bandwidth takes no value: 0"},
        bad_setting{"description", "description needs a text"},
        bad_setting{"description \"a\\x00b\"", "the description holds a NUL byte"},
        bad_setting{"description 123456789 123456789 123456789 123456789 123456789 123456789 123456789 123456789 1",
                    "the description is longer than 80 bytes"},
        bad_setting{"duplex", "duplex needs a value: half, full or auto"},
        bad_setting{"duplex double", "not a value of duplex: double; it takes half, full or auto"},
        bad_setting{"duplex ful", "not a value of duplex: ful; did you mean full?"},
        bad_setting{"duplex 2", "not a value of duplex: 2; that is the code of full"},
        bad_setting{"rate-mode 3", "not a value of rate-mode: 3; it takes dedicated or shared"},
        bad_setting{"switchport trunk mode maybe",
                    "not a value of switchport trunk mode: maybe; it takes off, on or "
                    "auto"},
        bad_setting{"switchport mode e", "not a value of switchport mode: e; did you mean E?"},
        bad_setting{"auto-negotiation yes", "not a value of auto-negotiation: yes; it takes on or off"},
        bad_setting{"beacon of", "not a value of beacon: of; did you mean off?"},
        bad_setting{"down-on-link-failure 3", "not a value of down-on-link-failure: 3; that is the code of on"},
        bad_setting{"receive-buffer-size 65536",
                    "not a value of receive-buffer-size: 65536; it takes a number of bytes from 1 to 65535"},
        bad_setting{"port-vsan 0", "not a value of port-vsan: 0; it takes a number from 1 to 65535"},
        bad_setting{"mtu -1", "not a value of mtu: -1; it takes a number of bytes from 1 to 4294967295"},
        bad_setting{"mtu 1500x", "not a value of mtu: 1500x; it takes a number of bytes from 1 to 4294967295"},
        bad_setting{"mtu 4294967296",
                    "not a value of mtu: 4294967296; it takes a number of bytes from 1 to 4294967295"},
        bad_setting{"bandwidth 0", "not a value of bandwidth: 0; it takes a number of kbit/s from 1 to 4294967295"},
        bad_setting{"receive-bb-credit -1",
                    "not a value of receive-bb-credit: -1; it takes default or a number from 1 to 4294967295"},
        bad_setting{"speed fast",
                    "not a value of speed: fast; it takes auto, auto max 2000, auto max 4000, auto 10 100 or a number "
                    "of Mbit/s from 1 to 4294967295"}));

// They are codes of the words, and who types them means an amount.
TEST(settings_read, take_no_number_that_has_words) {
    EXPECT_EQ(refusal_of("speed 0"), "not a value of speed: 0; that is the code of auto");
    EXPECT_EQ(refusal_of("speed 1"), "not a value of speed: 1; that is the code of auto max 2000");
    EXPECT_EQ(refusal_of("speed 2"), "not a value of speed: 2; that is the code of auto max 4000");
    EXPECT_EQ(refusal_of("speed 110"), "not a value of speed: 110; that is the code of auto 10 100");
    EXPECT_EQ(refusal_of("switchport mode 4"), "not a value of switchport mode: 4; that is the code of E");
    EXPECT_EQ(refusal_of("receive-bb-credit 0"), "not a value of receive-bb-credit: 0; that is the code of default");
}

TEST(settings_read, suggest_what_else_may_begin_a_line) {
    EXPECT_EQ(refusal_of("interfce fc1/1", {"interface"}), "not a known setting: interfce; did you mean interface?");
}

// Whatever numbers a port holds come back.
TEST(settings_read, give_back_what_ports_hold) {
    for (const pm_port_info_t &port : {full_port(), worded_port(), bare_port()})
        for (const auto &each : pmctl::all_settings()) {
            const auto value = pmctl::value_in(port, each);
            const std::string line = setting_line(value);
            if (line.empty()) continue;
            EXPECT_TRUE(is_same_value(read_setting(line_words(line)), value)) << line;
        }
}

TEST(settings_read, have_every_attribute) {
    std::set<uint32_t> attributes;
    for (const auto &each : pmctl::all_settings()) attributes.insert(each.attribute);
    EXPECT_EQ(attributes, (std::set<uint32_t>{1, 2, 3, 4, 5, 6, 7, 8, 12, 15, 17, 23, 29, 36, 44}));
}

TEST(settings_read, have_no_two_values_with_the_same_words) {
    for (const auto &each : pmctl::all_settings()) {
        const auto words = value_words(each.values);
        EXPECT_EQ(std::set<std::string>(words.begin(), words.end()).size(), words.size()) << each.keywords;
    }
}

TEST(words_after, are_keywords_and_values) {
    const auto after = [](std::vector<std::string> words) { return pmctl::words_after(words); };
    EXPECT_THAT(after({}), testing::AllOf(Contains("shutdown"), Contains("no"), Contains("switchport"),
                                          Contains("speed"), Not(Contains("mode"))));
    EXPECT_THAT(after({"no"}), ElementsAre("shutdown", "description", "bandwidth"));
    EXPECT_THAT(after({"switchport"}), ElementsAre("mode", "trunk"));
    EXPECT_THAT(after({"speed"}), ElementsAre("auto"));
    EXPECT_THAT(after({"speed", "auto"}), ElementsAre("max", "10"));
    EXPECT_THAT(after({"duplex"}), ElementsAre("half", "full", "auto"));
    EXPECT_THAT(after({"mtu"}), IsEmpty());
    EXPECT_THAT(after({"description", "x"}), IsEmpty());
}

}  // namespace
