// SPDX-License-Identifier: Apache-2.0
// Attributes that take more than their four bytes: the pair of types 91 and 92, and the owner's text.
#include <algorithm>

#include "port_mgr/port_mgr_common.h"
#include "record_fixture.h"

namespace {

using support::bytes;
using support::payload;
using unit::attribute;
using unit::bytes_of;
using unit::other_port;
using unit::this_port;

using record_attributes = unit::record_test;

// ---- the pair of types 91 and 92

TEST_F(record_attributes, holds_type_91_until_type_92_comes) {
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0x01020304U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0708);
    std::string expected = support::hex(without_attributes);
    EXPECT_EQ(support::hex(bytes_of(record)), expected.replace(2 * 276, 12, "040302010807"));
}

TEST_F(record_attributes, writes_nothing_for_type_91_alone) { EXPECT_EQ(parse(91, {1, 2, 3, 4}), without_attributes); }

TEST_F(record_attributes, writes_nothing_for_type_91_after_type_92) {
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0708);
}

TEST_F(record_attributes, writes_the_held_number_again_for_a_second_type_92) {
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    elements.add(92, attribute(this_port, {9, 10, 11, 12}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0x01020304U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0b0c);
}

TEST_F(record_attributes, holds_the_last_type_91_across_other_elements) {
    elements.add(91, attribute(this_port, {1, 1, 1, 1}));
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    elements.add(91, attribute(other_port, {2, 2, 2, 2}));
    elements.add(93, attribute(this_port, {3, 3, 3, 3}));
    elements.add(92, attribute(other_port, {4, 4, 4, 4}));
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0x01020304U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0708);
}

TEST_F(record_attributes, holds_nothing_from_one_record_to_the_next) {
    parse(91, {1, 2, 3, 4});
    parse(92, {5, 6, 7, 8});
    EXPECT_EQ(record.fcip_params[6], 0U);
}

// ---- the owner's text

bytes text_of_81() {
    bytes text;
    for (uint8_t i = 0; i < 81; ++i) text.push_back(static_cast<uint8_t>('0' + i));
    return text;
}

TEST_F(record_attributes, has_an_owner_of_at_most_80_characters) {
    elements.add(110, text_of_81());
    const bytes text = text_of_81();
    parse();
    EXPECT_EQ(std::string(record.owner), std::string(text.begin(), text.begin() + 80));
    EXPECT_EQ(record.owner[80], '\0');
}

TEST_F(record_attributes, has_the_owner_at_offset_292_and_nothing_else_changed) {
    elements.add(110, text_of_81());
    bytes text = text_of_81();
    text[80] = 0;
    bytes expected = without_attributes;
    std::ranges::copy(text, expected.begin() + 292);
    EXPECT_EQ(support::hex(parse()), support::hex(expected));
}

TEST_F(record_attributes, has_an_owner_whatever_port_the_text_starts_like) {
    elements.add(110, payload().be32(other_port).fill(77, 'x'));
    parse();
    EXPECT_EQ(std::string(record.owner), std::string("\x01\x02\x03\x05") + std::string(76, 'x'));
}

TEST_F(record_attributes, keeps_what_lies_behind_the_end_of_a_shorter_owner) {
    elements.add(110, payload().append({'m', 'e', 0}).fill(78, 'z'));
    parse();
    EXPECT_STREQ(record.owner, "me");
    EXPECT_EQ(record.owner[79], 'z');
}

TEST_F(record_attributes, takes_the_last_owner) {
    elements.add(110, payload().append({'a', 'b', 'c'}).fill(78, 0));
    elements.add(110, payload().append({'d'}).fill(80, 0));
    parse();
    EXPECT_STREQ(record.owner, "d");
}

class owner_length : public record_attributes, public testing::WithParamInterface<uint16_t> {};

TEST_P(owner_length, other_than_81_is_passed_over) {
    elements.add(110, payload().be32(this_port).fill(78, 'x'), GetParam());
    EXPECT_EQ(parse(), without_attributes);
}

INSTANTIATE_TEST_SUITE_P(lengths, owner_length, testing::Values(0, 4, 8, 80, 82, 0x51 + 256, 0xffff));

}  // namespace
