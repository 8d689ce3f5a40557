// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_mgr_common.h"
#include "state_reason_expectations.h"
#include "text_test.h"

namespace {

using unit::state_reason;
using unit::taking_a_word;

state_reason expected(uint32_t code) {
    const auto row = std::ranges::find(unit::state_reasons, code, &state_reason::code);
    return row == unit::state_reasons.end() ? state_reason{code, "down", "Unknown"} : *row;
}

class port_state_reason : public unit::text_test {
  protected:
    // Both arguments may have more than the bits that count.
    static void expect_text(uint32_t reason, int32_t form, const char *text) {
        const std::string name = "reason " + std::to_string(reason) + ", form " + std::to_string(form);
        const char *const given = taking_a_word(port_state_reason_string)(reason, form);
        expect_constant(given, text, name);
        EXPECT_EQ(static_cast<const void *>(given), taking_a_word(port_state_reason_string)(reason, form)) << name;
    }
};

TEST_F(port_state_reason, has_a_keyword_in_form_1) {
    for (uint32_t code = 0; code < 256; ++code) expect_text(code, 1, expected(code).keyword);
}

TEST_F(port_state_reason, has_a_message_in_every_other_form) {
    for (const int32_t form : {0, 2, -1, 255, 256, 257, 0x10001, 0x1000001, INT32_MIN, INT32_MIN + 1, INT32_MAX})
        for (uint32_t code = 0; code < 256; ++code) expect_text(code, form, expected(code).message);
}

TEST_F(port_state_reason, is_a_byte) {
    for (uint32_t code = 0; code < 256; ++code) {
        for (const uint32_t more : {0x100U, 0xffffff00U}) {
            expect_text(code | more, 1, expected(code).keyword);
            expect_text(code | more, 0, expected(code).message);
        }
    }
}

TEST_F(port_state_reason, has_texts_of_its_own_or_the_ones_for_all_others) {
    EXPECT_STREQ(port_state_reason_string(255, 1), "modRemoved");
    EXPECT_STREQ(port_state_reason_string(255, 0), "Module removed");
    EXPECT_STREQ(port_state_reason_string(12, 1), "down");
    EXPECT_STREQ(port_state_reason_string(12, 0), "Administratively down");
    EXPECT_STREQ(port_state_reason_string(128, 0), "SFP Port Connector Type Not Supported ");
    for (const uint32_t code : {0U, 124U, 138U, 200U, 254U}) {
        expect_text(code, 1, "down");
        expect_text(code, 0, "Unknown");
    }
}

}  // namespace
