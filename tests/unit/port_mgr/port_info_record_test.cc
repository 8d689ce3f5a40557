// SPDX-License-Identifier: Apache-2.0
// Base records.
#include "port_mgr/port_mgr_common.h"
#include "record_fixture.h"

namespace {

using testing::ElementsAre;
using unit::attribute;
using unit::bytes_of;
using unit::this_port;

using port_info_record = unit::record_test;

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
