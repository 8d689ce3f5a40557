// SPDX-License-Identifier: Apache-2.0
// The attribute elements behind base records. What an attribute fills is told by its offset in the record, so that the
// record's layout is tested, too.
#include <algorithm>
#include <initializer_list>

#include "port_mgr/port_mgr_common.h"
#include "record_fixture.h"

namespace {

using support::bytes;
using unit::attribute;
using unit::other_port;
using unit::this_port;

using record_attributes = unit::record_test;

// ---- attributes: the value's four bytes are 81 92 a3 b4

struct attribute_case {
    uint16_t type;
    size_t member;        // offset in the record
    const char *written;  // the bytes there
};

void PrintTo(const attribute_case &attribute, std::ostream *to) { *to << "type " << attribute.type; }

constexpr const char *number = "b4a39281";
constexpr const char *number_to_16 = "b4a3";
constexpr const char *number_to_8 = "b4";
constexpr const char *first_byte = "81";
constexpr const char *first_byte_to_32 = "81000000";
constexpr const char *raw = "8192a3b4";

const attribute_case attributes[] = {
    {4, 178, number_to_8},
    {22, 124, number},
    {23, 173, number},
    {24, 177, number_to_8},
    {30, 209, number_to_8},
    {31, 210, number_to_8},
    {32, 211, number_to_8},
    {36, 212, first_byte},
    {37, 228, number},
    {38, 213, number},
    {39, 217, first_byte_to_32},
    {42, 221, number},
    {43, 225, first_byte},
    {67, 226, first_byte},
    {68, 227, first_byte},
    {74, 232, number},
    {78, 236, first_byte},
    {81, 237, raw},
    {82, 245, raw},
    {83, 155, number_to_16},
    {84, 98, number_to_16},
    {85, 104, number_to_16},
    {86, 256, number},
    {87, 260, number},
    {88, 272, number},
    {89, 268, number},
    {90, 264, number},
    {92, 280, number_to_16},
    {93, 282, number},
    {94, 286, number_to_16},
    {95, 288, number},
    {97, 252, raw},
    {98, 160, number},
    {106, 376, number},
    {107, 380, number},
    {108, 384, number},
};

class port_attribute : public record_attributes, public testing::WithParamInterface<attribute_case> {
  protected:
    [[nodiscard]] std::string expected() const {
        std::string text = support::hex(without_attributes);
        const std::string written = GetParam().written;
        return text.replace(2 * GetParam().member, written.size(), written);
    }
};

TEST_P(port_attribute, fills_its_member_and_nothing_else) {
    EXPECT_EQ(support::hex(parse(GetParam().type, {0x81, 0x92, 0xa3, 0xb4})), expected());
}

TEST_P(port_attribute, is_the_last_of_its_type_that_belongs_to_the_port) {
    elements.add(GetParam().type, attribute(this_port, {0x11, 0x22, 0x33, 0x44}));
    elements.add(GetParam().type, attribute(this_port, {0x81, 0x92, 0xa3, 0xb4}));
    elements.add(GetParam().type, attribute(other_port, {0x55, 0x66, 0x77, 0x88}));
    EXPECT_EQ(support::hex(parse()), expected());
}

TEST_P(port_attribute, is_passed_over_when_it_belongs_to_another_port) {
    elements.add(GetParam().type, attribute(other_port, {0x81, 0x92, 0xa3, 0xb4}));
    EXPECT_EQ(parse(), without_attributes);
}

TEST_P(port_attribute, is_taken_whatever_its_length_says) {
    for (const uint16_t length : std::initializer_list<uint16_t>{0, 4, 7, 9, 81, 0xffff}) {
        elements.clear();
        elements.add(GetParam().type, attribute(this_port, {0x81, 0x92, 0xa3, 0xb4}), length);
        EXPECT_EQ(support::hex(parse()), expected()) << "length " << length;
    }
}

INSTANTIATE_TEST_SUITE_P(types, port_attribute, testing::ValuesIn(attributes),
                         [](const auto &each) { return "type_" + std::to_string(each.param.type); });

TEST_F(record_attributes, belongs_to_an_element_when_all_four_bytes_of_the_index_agree) {
    for (int bit = 0; bit < 32; ++bit) {
        elements.clear();
        elements.add(23, attribute(this_port ^ (1U << bit), {1, 2, 3, 4}));
        EXPECT_EQ(parse(), without_attributes) << "bit " << bit;
    }
}

TEST_F(record_attributes, compares_indexes_as_they_are_on_the_wire) {
    interfaces.wire_mask = 0xffffffff;
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(record_attributes, has_attributes_of_many_types_at_once) {
    std::string expected = support::hex(without_attributes);
    for (const attribute_case &each : attributes) {
        elements.add(each.type, attribute(this_port, {0x81, 0x92, 0xa3, 0xb4}));
        const std::string written = each.written;
        expected.replace(2 * each.member, written.size(), written);
    }
    EXPECT_EQ(support::hex(parse()), expected);
}

TEST_F(record_attributes, cuts_a_number_to_8_bits_but_takes_a_first_byte) {
    parse(24, {0x00, 0x00, 0x01, 0x2c});
    EXPECT_EQ(record.duplex, 0x2c);
    parse(36, {0x2c, 0x00, 0x00, 0x00});
    EXPECT_EQ(record.ignore_param, 0x2c);
}

TEST_F(record_attributes, keeps_members_that_nothing_fills_zero) {
    for (uint32_t type = 0; type <= 120; ++type)
        elements.add(static_cast<uint16_t>(type), attribute(this_port, bytes(77, 0xff)));
    parse();
    output.take();
    EXPECT_THAT(record.reserved_49, testing::Each(0));
    EXPECT_THAT(record.reserved_51, testing::Each(0));
    EXPECT_THAT(record.reserved_58, testing::Each(0));
}

TEST_F(record_attributes, ignores_type_105) { EXPECT_EQ(parse(105, {0x81, 0x92, 0xa3, 0xb4}), without_attributes); }

// ---- unknown types and failures

bool is_known(uint32_t type) {
    return type == 91 || type == 105 || type == 110 ||
           std::ranges::any_of(attributes, [&](const attribute_case &each) { return each.type == type; });
}

TEST_F(record_attributes, names_each_unknown_type_and_no_other) {
    for (uint32_t type = 0; type <= 0xffff; ++type) {
        elements.clear();
        elements.add(static_cast<uint16_t>(type), attribute(this_port, {0x81, 0x92, 0xa3, 0xb4}));
        const bytes parsed = parse();
        const std::string complaint =
            "pm_parse_port_info: Unknown TLV with type " + std::to_string(type) + " for port 1020304\n";
        ASSERT_EQ(output.take(), is_known(type) ? "" : complaint);
        ASSERT_EQ(parsed == without_attributes, !is_known(type) || type == 91 || type == 105 || type == 110)
            << "type " << type;
        support::call_log::take();
    }
}

TEST_F(record_attributes, knows_39_types) {
    int known = 0;
    for (uint32_t type = 0; type <= 0xffff; ++type) known += is_known(type) ? 1 : 0;
    EXPECT_EQ(known, 39);
}

TEST_F(record_attributes, names_an_unknown_type_for_each_element_and_goes_on) {
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    elements.add(50, attribute(this_port, {1, 2, 3, 4}));
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304\n"
              "pm_parse_port_info: Unknown TLV with type 50 for port 1020304\n"
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304\n");
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(record_attributes, names_the_port_by_its_converted_index) {
    interfaces.wire_mask = 0xffffffff;
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(), "pm_parse_port_info: Unknown TLV with type 200 for port fefdfcfb\n");
}

TEST_F(record_attributes, says_nothing_about_an_unknown_type_of_another_port) {
    elements.add(200, attribute(other_port, {1, 2, 3, 4}));
    EXPECT_EQ(parse(), without_attributes);
}

TEST_F(record_attributes, has_room_for_a_name_of_255_characters) {
    interfaces.name_size = 255;
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304" + std::string(255 - 12, '+') + "\n");
}

TEST_F(record_attributes, reports_an_unreadable_element_and_takes_the_one_before_again) {
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    elements.add_failure(0xdeadbeef);
    elements.add_failure(7);
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304\n"
              "pm_parse_port_info: Error 0xdeadbeef in tlv_array_get_next_tlv()\n"
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304\n"
              "pm_parse_port_info: Error 0x7 in tlv_array_get_next_tlv()\n"
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304\n");
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(record_attributes, passes_over_an_unreadable_first_element) {
    elements.add_failure(1);
    elements.add_failure(2);
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Error 0x1 in tlv_array_get_next_tlv()\n"
              "pm_parse_port_info: Error 0x2 in tlv_array_get_next_tlv()\n");
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(record_attributes, stores_nothing_when_every_element_is_unreadable) {
    elements.add_failure(1);
    EXPECT_EQ(parse(), without_attributes);
    EXPECT_EQ(output.take(), "pm_parse_port_info: Error 0x1 in tlv_array_get_next_tlv()\n");
}

}  // namespace
