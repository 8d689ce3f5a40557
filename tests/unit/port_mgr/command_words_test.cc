// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_mgr_common.h"
#include "text_test.h"

namespace {

using unit::taking_a_word;
using unit::text_function;

const text_function<uint32_t> speed_words{
    "pm_cli_dump_port_speed",
    pm_cli_dump_port_speed,
    {{0, "auto"},
     {1, "auto max 2000"},
     {2, "auto max 4000"},
     {10, "10"},
     {100, "100"},
     {110, "auto 10 100"},
     {1000, "1000"},
     {2000, "2000"},
     {4000, "4000"},
     {8000, "8000"},
     {10000, "10000"}},
    "auto",
};

const std::vector<text_function<uint8_t>> words_of_bytes{
    {"pm_cli_dump_port_duplex_mode", pm_cli_dump_port_duplex_mode, {{1, "half"}, {2, "full"}}, "auto"},
    {"pm_cli_dump_port_rate_mode", pm_cli_dump_port_rate_mode, {{1, "dedicated"}}, "shared"},
    {"pm_cli_dump_trunk_mode", pm_cli_dump_trunk_mode, {{1, "off"}, {2, "on"}, {3, "auto"}}, "off"},
};

using command_words = unit::text_test;

TEST_F(command_words, of_speeds_are_numbers_or_automatic) { expect_texts(speed_words); }

TEST_F(command_words, of_unknown_speeds_are_automatic) {
    for (const uint32_t speed : {3U, 16000U, 0x8000000aU, 0xffffffffU}) {
        EXPECT_STREQ(pm_cli_dump_port_speed(speed), "auto") << speed;
    }
}

TEST_F(command_words, of_bytes_are_known_or_the_default) {
    for (const auto &words : words_of_bytes) expect_texts(words);
}

TEST_F(command_words, of_bytes_look_at_the_byte) {
    EXPECT_STREQ(taking_a_word(pm_cli_dump_port_duplex_mode)(257), "half");
    EXPECT_STREQ(taking_a_word(pm_cli_dump_port_rate_mode)(257), "dedicated");
    EXPECT_STREQ(taking_a_word(pm_cli_dump_trunk_mode)(259), "auto");
}

}  // namespace
