// SPDX-License-Identifier: Apache-2.0
// Base records and their attribute elements. What an attribute fills is told by its offset in the record, so that the
// record's layout is tested, too.
#include <algorithm>
#include <map>

#include "base_record.h"
#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::base_record;
using unit::bytes_of;
using unit::expected_record;

constexpr if_index_t this_port = 0x01020304;
constexpr if_index_t other_port = 0x01020305;

bytes attribute(if_index_t if_index, const bytes &value) { return payload().be32(if_index).append(value); }

class port_info_record : public support::library_test {
  protected:
    // Parses the base record with the elements set so far.
    bytes parse() {
        EXPECT_EQ(pm_parse_port_info(base.data(), base.data(), &record), 0U);
        return bytes_of(record);
    }

    bytes parse(uint16_t type, const bytes &value) {
        elements.clear();
        elements.add(type, attribute(this_port, value));
        return parse();
    }

    const guarded_bytes base{base_record()};
    const bytes without_attributes = expected_record(base_record());
    pm_port_info_t record = [] {
        pm_port_info_t rubbish;
        std::memset(&rubbish, 0x5a, sizeof rubbish);
        return rubbish;
    }();
};

// ---- the base record

TEST_F(port_info_record, has_every_byte_of_the_base_record_in_its_place) {
    EXPECT_EQ(pm_parse_port_info(base.data(), nullptr, &record), 0U);
    ASSERT_EQ(without_attributes.size(), 388U);
    EXPECT_EQ(support::hex(bytes_of(record)), support::hex(without_attributes));
}

TEST_F(port_info_record, has_the_values_of_the_base_record_in_its_members) {
    EXPECT_EQ(pm_parse_port_info(base.data(), nullptr, &record), 0U);
    const auto as_is = [](uint32_t wire) { return __builtin_bswap32(wire); };
    EXPECT_EQ(record.if_index, 0x01020304U);
    EXPECT_EQ(record.admin_mode, 0x05060708U);
    EXPECT_EQ(record.description[0], 9);
    EXPECT_EQ(record.description[80], 89);
    EXPECT_EQ(record.admin_speed, 0x5a5b5c5dU);
    EXPECT_EQ(record.admin_state, 0x5e);
    EXPECT_EQ(record.oper_mode, 0x5f606162U);
    EXPECT_THAT(record.lane_state, ElementsAre(0x63, 0x64, 0x65, 0x66));
    EXPECT_EQ(record.port_vsan, 0x6768);
    EXPECT_EQ(record.bb_credit[0], 0x696a6b6cU);
    EXPECT_EQ(record.bb_credit[3], 0x75767778U);
    EXPECT_EQ(record.rx_buf_size, 0x797a);
    EXPECT_EQ(record.oper_state, 0x7b);
    EXPECT_EQ(record.fcid, as_is(0x7c7d7e7f));
    EXPECT_EQ(record.ip_address, as_is(0x80818283));
    EXPECT_EQ(record.ip_mask, as_is(0x84858687));
    EXPECT_EQ(record.oper_speed, 0x88898a8bU);
    EXPECT_EQ(record.mtu, 0x8c8d8e8fU);
    EXPECT_EQ(record.bandwidth, 0x90919293U);
    EXPECT_EQ(record.state_reason, 0x94);
    EXPECT_EQ(record.admin_trunk_mode, 0x95);
    EXPECT_EQ(record.oper_trunk_mode, 0x96);
    EXPECT_EQ(record.beacon_mode, 0x97);
    EXPECT_EQ(record.service_state, 0x98999a9bU);
    EXPECT_EQ(record.port_type, 0x9c9d9e9fU);
    EXPECT_THAT(record.snmp_trap, ElementsAre(0xa0, 0xa1));
    EXPECT_EQ(record.down_on_link_failure, 0xa2a3a4a5U);
    EXPECT_EQ(record.parent_if_index, 0xa6a7a8a9U);
    EXPECT_EQ(record.link_error_count[0], 0xaaabacadU);
    EXPECT_EQ(record.link_error_count[4], 0xbabbbcbdU);
}

TEST_F(port_info_record, has_its_interface_indexes_converted_by_the_platform) {
    interfaces.wire_mask = 0xff00ff00;
    EXPECT_EQ(pm_parse_port_info(base.data(), nullptr, &record), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("ntoh_if_index() = 0x01fd03fb", "ntoh_if_index() = 0xa658a856"));
    EXPECT_EQ(record.if_index, 0x01fd03fbU);
    EXPECT_EQ(record.parent_if_index, 0xa658a856U);
    EXPECT_EQ(record.admin_mode, 0x05060708U);
}

TEST_F(port_info_record, reads_no_elements_without_an_array) {
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    support::call_log::take();
    EXPECT_EQ(pm_parse_port_info(base.data(), nullptr, &record), 0U);
    for (const std::string &call : support::call_log::take()) EXPECT_TRUE(call.starts_with("ntoh_if_index")) << call;
    EXPECT_EQ(record.auto_neg, 0U);
}

TEST_F(port_info_record, reads_no_element_of_an_empty_array) {
    elements.set_origin(base.data());
    EXPECT_EQ(support::hex(parse()), support::hex(without_attributes));
    EXPECT_THAT(support::call_log::take(), ElementsAre(testing::_, testing::_, "tlv_array_get_num_tlvs(+0, 1)"));
}

TEST_F(port_info_record, counts_elements_once_and_reads_each_once) {
    elements.set_origin(base.data());
    for (int i = 0; i < 3; ++i) elements.add(105, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_THAT(support::call_log::take(),
                ElementsAre(testing::_, testing::_, "tlv_array_get_num_tlvs(+0, 1)", "tlv_array_get_next_tlv(+0, 1, 0)",
                            "tlv_array_get_next_tlv(+0, 1, 1)", "tlv_array_get_next_tlv(+0, 1, 2)"));
}

TEST_F(port_info_record, allocates_nothing) {
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    for (const std::string &call : support::call_log::take()) EXPECT_FALSE(call.starts_with("malloc")) << call;
}

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

class port_attribute : public port_info_record, public testing::WithParamInterface<attribute_case> {
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

TEST_F(port_info_record, belongs_to_an_element_when_all_four_bytes_of_the_index_agree) {
    for (int bit = 0; bit < 32; ++bit) {
        elements.clear();
        elements.add(23, attribute(this_port ^ (1U << bit), {1, 2, 3, 4}));
        EXPECT_EQ(parse(), without_attributes) << "bit " << bit;
    }
}

TEST_F(port_info_record, compares_indexes_as_they_are_on_the_wire) {
    interfaces.wire_mask = 0xffffffff;
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(port_info_record, has_attributes_of_many_types_at_once) {
    std::string expected = support::hex(without_attributes);
    for (const attribute_case &each : attributes) {
        elements.add(each.type, attribute(this_port, {0x81, 0x92, 0xa3, 0xb4}));
        const std::string written = each.written;
        expected.replace(2 * each.member, written.size(), written);
    }
    EXPECT_EQ(support::hex(parse()), expected);
}

TEST_F(port_info_record, cuts_a_number_to_8_bits_but_takes_a_first_byte) {
    parse(24, {0x00, 0x00, 0x01, 0x2c});
    EXPECT_EQ(record.duplex, 0x2c);
    parse(36, {0x2c, 0x00, 0x00, 0x00});
    EXPECT_EQ(record.ignore_param, 0x2c);
}

TEST_F(port_info_record, keeps_members_that_nothing_fills_zero) {
    for (uint32_t type = 0; type <= 120; ++type)
        elements.add(static_cast<uint16_t>(type), attribute(this_port, bytes(77, 0xff)));
    parse();
    output.take();
    EXPECT_THAT(record.reserved_49, testing::Each(0));
    EXPECT_THAT(record.reserved_51, testing::Each(0));
    EXPECT_THAT(record.reserved_58, testing::Each(0));
}

TEST_F(port_info_record, ignores_type_105) { EXPECT_EQ(parse(105, {0x81, 0x92, 0xa3, 0xb4}), without_attributes); }

// ---- the pair of types 91 and 92

TEST_F(port_info_record, holds_type_91_until_type_92_comes) {
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0x01020304U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0708);
    std::string expected = support::hex(without_attributes);
    EXPECT_EQ(support::hex(bytes_of(record)), expected.replace(2 * 276, 12, "040302010807"));
}

TEST_F(port_info_record, writes_nothing_for_type_91_alone) { EXPECT_EQ(parse(91, {1, 2, 3, 4}), without_attributes); }

TEST_F(port_info_record, writes_nothing_for_type_91_after_type_92) {
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0708);
}

TEST_F(port_info_record, writes_the_held_number_again_for_a_second_type_92) {
    elements.add(91, attribute(this_port, {1, 2, 3, 4}));
    elements.add(92, attribute(this_port, {5, 6, 7, 8}));
    elements.add(92, attribute(this_port, {9, 10, 11, 12}));
    parse();
    EXPECT_EQ(record.fcip_params[6], 0x01020304U);
    EXPECT_EQ(record.fcip_tcp_port, 0x0b0c);
}

TEST_F(port_info_record, holds_the_last_type_91_across_other_elements) {
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

TEST_F(port_info_record, holds_nothing_from_one_record_to_the_next) {
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

TEST_F(port_info_record, has_an_owner_of_at_most_80_characters) {
    elements.add(110, text_of_81());
    const bytes text = text_of_81();
    parse();
    EXPECT_EQ(std::string(record.owner), std::string(text.begin(), text.begin() + 80));
    EXPECT_EQ(record.owner[80], '\0');
}

TEST_F(port_info_record, has_the_owner_at_offset_292_and_nothing_else_changed) {
    elements.add(110, text_of_81());
    bytes text = text_of_81();
    text[80] = 0;
    bytes expected = without_attributes;
    std::ranges::copy(text, expected.begin() + 292);
    EXPECT_EQ(support::hex(parse()), support::hex(expected));
}

TEST_F(port_info_record, has_an_owner_whatever_port_the_text_starts_like) {
    elements.add(110, payload().be32(other_port).fill(77, 'x'));
    parse();
    EXPECT_EQ(std::string(record.owner), std::string("\x01\x02\x03\x05") + std::string(76, 'x'));
}

TEST_F(port_info_record, keeps_what_lies_behind_the_end_of_a_shorter_owner) {
    elements.add(110, payload().append({'m', 'e', 0}).fill(78, 'z'));
    parse();
    EXPECT_STREQ(record.owner, "me");
    EXPECT_EQ(record.owner[79], 'z');
}

TEST_F(port_info_record, takes_the_last_owner) {
    elements.add(110, payload().append({'a', 'b', 'c'}).fill(78, 0));
    elements.add(110, payload().append({'d'}).fill(80, 0));
    parse();
    EXPECT_STREQ(record.owner, "d");
}

class owner_length : public port_info_record, public testing::WithParamInterface<uint16_t> {};

TEST_P(owner_length, other_than_81_is_passed_over) {
    elements.add(110, payload().be32(this_port).fill(78, 'x'), GetParam());
    EXPECT_EQ(parse(), without_attributes);
}

INSTANTIATE_TEST_SUITE_P(lengths, owner_length, testing::Values(0, 4, 8, 80, 82, 0x51 + 256, 0xffff));

// ---- unknown types and failures

bool is_known(uint32_t type) {
    return type == 91 || type == 105 || type == 110 ||
           std::ranges::any_of(attributes, [&](const attribute_case &each) { return each.type == type; });
}

TEST_F(port_info_record, names_each_unknown_type_and_no_other) {
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

TEST_F(port_info_record, knows_39_types) {
    int known = 0;
    for (uint32_t type = 0; type <= 0xffff; ++type) known += is_known(type) ? 1 : 0;
    EXPECT_EQ(known, 39);
}

TEST_F(port_info_record, names_an_unknown_type_for_each_element_and_goes_on) {
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

TEST_F(port_info_record, names_the_port_by_its_converted_index) {
    interfaces.wire_mask = 0xffffffff;
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(), "pm_parse_port_info: Unknown TLV with type 200 for port fefdfcfb\n");
}

TEST_F(port_info_record, says_nothing_about_an_unknown_type_of_another_port) {
    elements.add(200, attribute(other_port, {1, 2, 3, 4}));
    EXPECT_EQ(parse(), without_attributes);
}

TEST_F(port_info_record, has_room_for_a_name_of_255_characters) {
    interfaces.name_size = 255;
    elements.add(200, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Unknown TLV with type 200 for port 1020304" + std::string(255 - 12, '+') + "\n");
}

TEST_F(port_info_record, reports_an_unreadable_element_and_takes_the_one_before_again) {
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

TEST_F(port_info_record, passes_over_an_unreadable_first_element) {
    elements.add_failure(1);
    elements.add_failure(2);
    elements.add(23, attribute(this_port, {1, 2, 3, 4}));
    parse();
    EXPECT_EQ(output.take(),
              "pm_parse_port_info: Error 0x1 in tlv_array_get_next_tlv()\n"
              "pm_parse_port_info: Error 0x2 in tlv_array_get_next_tlv()\n");
    EXPECT_EQ(record.auto_neg, 0x01020304U);
}

TEST_F(port_info_record, stores_nothing_when_every_element_is_unreadable) {
    elements.add_failure(1);
    EXPECT_EQ(parse(), without_attributes);
    EXPECT_EQ(output.take(), "pm_parse_port_info: Error 0x1 in tlv_array_get_next_tlv()\n");
}

// ---- null pointers are reported, and used all the same

using port_info_record_death = port_info_record;

TEST_F(port_info_record_death, reports_a_null_base_record) {
    EXPECT_DEATH(pm_parse_port_info(nullptr, nullptr, &record), "");
    EXPECT_THAT(assertions.text(), testing::HasSubstr("function pm_parse_port_info_base, line"));
    assertions.resize(0);
}

TEST_F(port_info_record_death, reports_a_null_record) {
    EXPECT_DEATH(pm_parse_port_info(base.data(), nullptr, nullptr), "");
    EXPECT_THAT(assertions.text(), testing::HasSubstr("function pm_parse_port_info_base, line"));
    assertions.resize(0);
}

}  // namespace
