// SPDX-License-Identifier: Apache-2.0
#include <utility>

#include "guarded_bytes.h"
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::allocations;
using unit::answer;
using unit::parse_test;
using unit::report_start;

// Byte n of record r holds n + 1 + 60 r.
payload brief_answer(uint32_t count) {
    payload all = answer(0, count);
    for (uint32_t record = 0; record < count; ++record) {
        for (uint32_t i = 0; i < 51; ++i) all.u8(static_cast<uint8_t>(i + 1 + 60 * record));
    }
    return all;
}

class brief_response : public parse_test<pm_port_info_brief_t> {
  protected:
    uint32_t parse(const bytes &content, uint32_t size) {
        const guarded_bytes wire(content);
        return pm_parse_get_port_info_brief_res_payload(wire.data(), size, &out.count, &out.records);
    }
    uint32_t parse(const bytes &content) { return parse(content, static_cast<uint32_t>(content.size())); }
};

TEST_F(brief_response, has_every_byte_in_its_place) {
    EXPECT_EQ(parse(brief_answer(2)), 0U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(support::hex(out.records, 51),
              "04030201"
              "08070605"
              "0c0b0a09"
              "0e0d"
              "0f"
              "10111213"
              "14151617"
              "00000000"
              "1f1e1d1c"
              "23222120"
              "27262524"
              "28"
              "29"
              "2a"
              "00"
              "2f2e2d2c"
              "33323130");
    EXPECT_EQ(support::hex(out.records + 1, 51),
              "403f3e3d"
              "44434241"
              "48474645"
              "4a49"
              "4b"
              "4c4d4e4f"
              "50515253"
              "00000000"
              "5b5a5958"
              "5f5e5d5c"
              "63626160"
              "64"
              "65"
              "66"
              "00"
              "6b6a6968"
              "6f6e6d6c");
    EXPECT_THAT(support::call_log::take(), testing::Contains("malloc(102)").Times(1));
}

TEST_F(brief_response, has_the_values_in_its_members) {
    EXPECT_EQ(parse(brief_answer(1)), 0U);
    const pm_port_info_brief_t &record = out.records[0];
    EXPECT_EQ(record.if_index, 0x01020304U);
    EXPECT_EQ(record.admin_mode, 0x05060708U);
    EXPECT_EQ(record.oper_mode, 0x090a0b0cU);
    EXPECT_EQ(record.port_vsan, 0x0d0e);
    EXPECT_EQ(record.oper_state, 0x0f);
    EXPECT_EQ(record.fcid, __builtin_bswap32(0x10111213));
    EXPECT_EQ(record.ip_address, __builtin_bswap32(0x14151617));
    EXPECT_EQ(record.oper_speed, 0x1c1d1e1fU);
    EXPECT_EQ(record.mtu, 0x20212223U);
    EXPECT_EQ(record.bandwidth, 0x24252627U);
    EXPECT_EQ(record.state_reason, 0x28);
    EXPECT_EQ(record.admin_trunk_mode, 0x29);
    EXPECT_EQ(record.oper_trunk_mode, 0x2a);
    EXPECT_EQ(record.service_state, 0x2c2d2e2fU);
    EXPECT_EQ(record.parent_if_index, 0x30313233U);
}

TEST_F(brief_response, has_its_interface_indexes_converted_by_the_platform) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(parse(brief_answer(1)), 0U);
    EXPECT_EQ(out.records[0].if_index, 0xfefdfcfbU);
    EXPECT_EQ(out.records[0].parent_if_index, 0xcfcecdccU);
    EXPECT_EQ(out.records[0].service_state, 0x2c2d2e2fU);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("malloc(51)", "ntoh_if_index() = 0xfefdfcfb", "ntoh_if_index() = 0xcfcecdcc"));
}

TEST_F(brief_response, does_not_look_at_the_size) {
    for (const uint32_t size : {0U, 1U, 8U, 58U, 0xffffffffU}) {
        EXPECT_EQ(parse(brief_answer(1), size), 0U);
        EXPECT_EQ(out.count, 1U);
        out.release();
    }
}

TEST_F(brief_response, reads_no_elements_behind_its_records) {
    elements.add(23, payload().be32(0x01020304).be32(7));
    EXPECT_EQ(parse(brief_answer(1).fill(40, 1)), 0U);
    for (const std::string &call : support::call_log::take()) EXPECT_FALSE(call.starts_with("tlv_array")) << call;
}

TEST_F(brief_response, without_ports_is_a_success_with_a_null_array) {
    EXPECT_EQ(parse(answer(0, 0)), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(brief_response, without_payload_is_refused) {
    EXPECT_EQ(pm_parse_get_port_info_brief_res_payload(nullptr, 100, &out.count, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(brief_response, with_a_status_returns_it) {
    for (const uint32_t status : {1U, PM_ERR_REJECTED, 0x01000000U}) {
        EXPECT_EQ(parse(payload().be32(status)), status);
        EXPECT_TRUE(out.untouched_both());
    }
}

TEST_F(brief_response, without_memory_keeps_its_count_and_has_a_null_array) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(brief_answer(2)), 1U);
    EXPECT_EQ(out.count, 2U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(output.take(), MatchesRegex(std::string(report_start) + "102\n"));
}

TEST_F(brief_response, whose_records_do_not_fit_in_memory_is_a_failed_allocation) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(answer(0, 0xffffffff)), 1U);
    EXPECT_EQ(out.count, 0xffffffffU);
    EXPECT_EQ(out.records, nullptr);
    // 0x32ffffffcd bytes, of which 32 bits are told.
    EXPECT_THAT(output.take(), MatchesRegex(std::string(report_start) + "-51\n"));
    if (sizeof(size_t) == 4) {
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
}

using brief_message = parse_test<pm_port_info_brief_t>;

TEST_F(brief_message, with_a_count_that_does_not_fit_is_malformed) {
    // 0x5050506 records of 51 bytes are 50 bytes more than 32 bits hold.
    for (const uint32_t count : {2U, 3U, 0x05050505U, 0x05050506U, 0x80000000U, 0xffffffffU}) {
        const mts_msg_t message = transport.message(3141, answer(0, count).fill(51 + 50, 0));
        EXPECT_EQ(pm_parse_get_port_info_brief(&message, &out.count, &out.records), PM_ERR_INVALID_PARAM) << count;
        EXPECT_TRUE(out.untouched_both()) << count;
        transport.drop(message);
    }
    EXPECT_EQ(allocations(), 0);
}

}  // namespace
