// SPDX-License-Identifier: Apache-2.0
// Texts that the library owns: constants, and the shared buffer for values without a text.
#include "port_mgr/port_mgr_common.h"
#include "text_test.h"

namespace {

using unit::shared_buffer;
using unit::shared_buffer_with;
using unit::taking_a_word;

const std::string buffer_at_load = shared_buffer();

using port_strings = unit::text_test;

TEST_F(port_strings, start_out_with_a_zeroed_buffer) { EXPECT_EQ(buffer_at_load, shared_buffer_with("")); }

TEST_F(port_strings, of_words_are_known_or_name_the_value_in_the_shared_buffer) {
    for (const auto &strings : unit::shared_texts_of_words) expect_texts(strings);
}

TEST_F(port_strings, of_bytes_are_known_or_name_the_byte_in_the_shared_buffer) {
    for (const auto &strings : unit::shared_texts_of_bytes) expect_texts(strings);
}

TEST_F(port_strings, of_words_that_are_constant_only_have_a_constant_default) {
    for (const auto &strings : unit::texts_of_words) expect_texts(strings);
}

TEST_F(port_strings, of_bytes_that_are_constant_only_have_a_constant_default) {
    for (const auto &strings : unit::texts_of_bytes) expect_texts(strings);
}

TEST_F(port_strings, of_flow_control_are_off_for_all_but_four_of_65536_values) {
    expect_texts(unit::flow_control_texts);
}

TEST_F(port_strings, of_port_modes_do_not_take_combinations_apart) {
    EXPECT_STREQ(port_mode_string(0), "Unknown(0)");
    EXPECT_STREQ(port_mode_string(3), "Unknown(3)");
    EXPECT_STREQ(port_mode_string(0x1c0), "Unknown(448)");
    EXPECT_STREQ(port_mode_string(-1), "Unknown(-1)");
    EXPECT_STREQ(port_mode_string(INT32_MIN), "Unknown(-2147483648)");
    EXPECT_STREQ(port_mode_string(524288), "FA");
}

TEST_F(port_strings, of_narrow_values_look_at_their_own_bits) {
    EXPECT_STREQ(taking_a_word(port_beacon_mode_string)(257), "on");
    EXPECT_STREQ(taking_a_word(port_beacon_mode_string)(0xffffff02), "off");
    EXPECT_STREQ(taking_a_word(port_snmp_trap_string)(0x12345603), "Unknown(3)");
    EXPECT_STREQ(taking_a_word(port_snmp_trap_string)(0xffffffff), "Unknown(255)");
    EXPECT_STREQ(taking_a_word(port_state_string)(0x1ff), "all");
    EXPECT_STREQ(taking_a_word(port_flowctrl_mode_string)(0x10004), "desired");
    EXPECT_STREQ(taking_a_word(port_flowctrl_mode_string)(0x101), "off");
}

TEST_F(port_strings, of_unknown_values_take_one_another_s_place) {
    const char *const first = port_mode_string(-1000000000);
    EXPECT_STREQ(first, "Unknown(-1000000000)");
    const char *const second = port_rate_mode_string(9);
    EXPECT_EQ(static_cast<const void *>(first), second);
    EXPECT_EQ(shared_buffer(), shared_buffer_with("Unknown(9)"));
}

TEST_F(port_strings, that_are_known_leave_the_text_of_an_unknown_one) {
    const char *const unknown = port_type_string(4);
    EXPECT_STREQ(port_type_string(3), "hidden");
    EXPECT_STREQ(port_state_string(0), "unknown");
    EXPECT_STREQ(unknown, "Unknown(4)");
}

TEST_F(port_strings, of_an_owner_are_the_owner_s_own_text) {
    const char owner[] = "owner";
    EXPECT_EQ(static_cast<const void *>(port_owner_string(owner)), owner);
    EXPECT_EQ(static_cast<const void *>(port_owner_string(owner + 5)), owner + 5) << "an empty text";
    EXPECT_EQ(static_cast<const void *>(port_owner_string(local_temp_string_buffer)), local_temp_string_buffer);
    EXPECT_STREQ(owner, "owner");
    expect_shared_buffer_untouched("port_owner_string");
}

TEST_F(port_strings, of_no_owner_are_empty) {
    expect_constant(port_owner_string(nullptr), "", "port_owner_string(nullptr)");
    EXPECT_EQ(static_cast<const void *>(port_owner_string(nullptr)), port_owner_string(nullptr));
}

}  // namespace
