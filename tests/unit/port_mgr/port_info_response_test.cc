// SPDX-License-Identifier: Apache-2.0
// The full answer, and the answer about the next port.
#include <utility>

#include "base_record.h"
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
using unit::base_record;
using unit::base_record_of;
using unit::bytes_of;
using unit::cut;
using unit::expected_record;
using unit::parse_test;
using unit::report_start;

// A full answer about ports 1, 2, ... of type 1.
payload full_answer(uint32_t count) {
    payload all = answer(0, count);
    for (uint32_t i = 1; i <= count; ++i) all.append(base_record_of(0x01000000 + i));
    return all;
}

// ---- the full answer

class full_response : public parse_test<pm_port_info_t> {
  protected:
    uint32_t parse(const bytes &content) {
        const guarded_bytes wire(content);
        elements.set_origin(wire.data());
        return pm_parse_get_port_info_res_payload(wire.data(), wire.size(), &out.count, &out.records);
    }
};

TEST_F(full_response, becomes_one_block_of_records) {
    EXPECT_EQ(parse(full_answer(3)), 0U);
    ASSERT_EQ(out.count, 3U);
    for (uint32_t i = 0; i < 3; ++i)
        EXPECT_EQ(bytes_of(out.records[i]), expected_record(base_record_of(0x01000001 + i)));
    EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_TRUE(heap.is_live(out.records));
    EXPECT_THAT(support::call_log::take(), testing::Contains("malloc(1164)").Times(1));
}

TEST_F(full_response, allocates_once_however_many_ports_there_are) {
    EXPECT_EQ(parse(full_answer(500)), 0U);
    EXPECT_EQ(allocations(), 1);
    EXPECT_EQ(out.records[499].if_index, 0x010001f4U);
}

TEST_F(full_response, without_ports_is_a_success_with_a_null_array) {
    EXPECT_EQ(parse(answer(0, 0)), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(full_response, without_ports_has_no_elements_read_behind_it) {
    elements.add(23, payload().be32(0x01000001).be32(7));
    EXPECT_EQ(parse(answer(0, 0).fill(40, 1)), 0U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(full_response, that_ends_with_its_last_record_has_no_elements) {
    elements.add(23, payload().be32(0x01000001).be32(7));
    EXPECT_EQ(parse(full_answer(2)), 0U);
    EXPECT_EQ(out.records[0].auto_neg, 0U);
    for (const std::string &call : support::call_log::take()) EXPECT_FALSE(call.starts_with("tlv_array")) << call;
}

TEST_F(full_response, has_elements_in_a_single_byte_behind_its_last_record) {
    elements.add(23, payload().be32(0x01000002).be32(7));
    EXPECT_EQ(parse(full_answer(2).u8(0)), 0U);
    EXPECT_EQ(out.records[0].auto_neg, 0U);
    EXPECT_EQ(out.records[1].auto_neg, 7U);
    EXPECT_THAT(support::call_log::take(), testing::Contains("tlv_array_get_num_tlvs(+386, 1)").Times(2));
}

TEST_F(full_response, gives_each_record_its_own_elements_and_all_of_them_the_owner) {
    elements.add(23, payload().be32(0x01000002).be32(7));
    elements.add(23, payload().be32(0x01000001).be32(8));
    elements.add(110, payload().append({'m', 'e'}).fill(79, 0));
    EXPECT_EQ(parse(full_answer(3).fill(30, 1)), 0U);
    EXPECT_EQ(out.records[0].auto_neg, 8U);
    EXPECT_EQ(out.records[1].auto_neg, 7U);
    EXPECT_EQ(out.records[2].auto_neg, 0U);
    for (int i = 0; i < 3; ++i) EXPECT_STREQ(out.records[i].owner, "me");
    EXPECT_THAT(support::call_log::take(), testing::Contains("tlv_array_get_next_tlv(+575, 1, 0)").Times(3));
}

TEST_F(full_response, without_payload_is_refused) {
    EXPECT_EQ(pm_parse_get_port_info_res_payload(nullptr, 100, &out.count, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(full_response, with_a_status_returns_it) {
    for (const uint32_t status : {1U, 5U, PM_ERR_REJECTED, PM_ERR_INVALID_RANGE, 0x01000000U, 0xffffffffU}) {
        EXPECT_EQ(parse(answer(status, 1).append(base_record())), status);
        EXPECT_TRUE(out.untouched_both());
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(full_response, with_a_status_returns_it_also_when_it_is_malformed) {
    EXPECT_EQ(parse(payload().be32(PM_ERR_REJECTED)), PM_ERR_REJECTED);
    EXPECT_EQ(parse(payload().be32(PM_ERR_REJECTED).u8(0)), PM_ERR_REJECTED);
    EXPECT_EQ(parse(answer(PM_ERR_REJECTED, 0xffffffff)), PM_ERR_REJECTED);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(full_response, cut_short_anywhere_is_malformed) {
    const bytes good = full_answer(2);
    for (size_t size = 0; size < good.size(); ++size) {
        ASSERT_EQ(parse(cut(good, size)), PM_ERR_INVALID_PARAM) << size;
        ASSERT_TRUE(out.untouched_both()) << size;
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(full_response, with_a_count_that_does_not_fit_is_malformed) {
    // 0x1bcdcc4 records of 189 bytes are 20 bytes more than 32 bits hold.
    for (const uint32_t count : {2U, 3U, 0x100U, 0x016ac168U, 0x016ac169U, 0x7fffffffU, 0x80000000U, 0xffffffffU}) {
        EXPECT_EQ(parse(answer(0, count).append(base_record())), PM_ERR_INVALID_PARAM) << count;
        EXPECT_TRUE(out.untouched_both()) << count;
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(full_response, without_memory_keeps_its_count_and_has_a_null_array) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(full_answer(3)), 1U);
    EXPECT_EQ(out.count, 3U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(output.take(), MatchesRegex(std::string(report_start) + "1164\n"));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(1164) fails"));
}

using full_message = parse_test<pm_port_info_t>;

TEST_F(full_message, has_its_elements_behind_its_records) {
    const mts_msg_t message = transport.message(324, full_answer(2).fill(12, 0));
    elements.set_origin(transport.payload_of(message));
    elements.add(23, payload().be32(0x01000002).be32(7));
    EXPECT_EQ(pm_parse_get_port_info(&message, &out.count, &out.records), 0U);
    EXPECT_EQ(out.count, 2U);
    EXPECT_EQ(out.records[1].auto_neg, 7U);
    EXPECT_THAT(support::call_log::take(), testing::Contains("tlv_array_get_num_tlvs(+386, 1)").Times(2));
    transport.drop(message);
}

// ---- the answer about the next port

class next_response : public parse_test<pm_port_info_t> {
  protected:
    uint32_t parse(const bytes &content) {
        const mts_msg_t message = transport.message(325, content);
        elements.set_origin(transport.payload_of(message));
        const uint32_t status = pm_parse_get_next_port_info(&message, &out.count, &out.records);
        transport.drop(message);
        return status;
    }
};

TEST_F(next_response, becomes_one_record) {
    EXPECT_EQ(parse(answer(0, 1).append(base_record())), 0U);
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(bytes_of(*out.records), expected_record(base_record()));
    EXPECT_THAT(support::call_log::take(), testing::Contains("malloc(388)").Times(1));
    EXPECT_TRUE(heap.is_live(out.records));
}

TEST_F(next_response, has_one_record_whatever_its_count) {
    for (const uint32_t count : {0U, 2U, 0xffffffffU}) {
        EXPECT_EQ(parse(answer(0, count).append(base_record())), 0U);
        EXPECT_EQ(out.count, count);
        EXPECT_EQ(bytes_of(*out.records), expected_record(base_record()));
        out.release();
    }
}

TEST_F(next_response, of_197_bytes_has_no_elements) {
    elements.add(23, payload().be32(0x01020304).be32(7));
    EXPECT_EQ(parse(answer(0, 1).append(base_record())), 0U);
    EXPECT_EQ(out.records->auto_neg, 0U);
    for (const std::string &call : support::call_log::take()) EXPECT_FALSE(call.starts_with("tlv_array")) << call;
}

TEST_F(next_response, of_198_bytes_has_elements_at_197) {
    elements.add(23, payload().be32(0x01020304).be32(7));
    EXPECT_EQ(parse(answer(0, 1).append(base_record()).u8(0)), 0U);
    EXPECT_EQ(out.records->auto_neg, 7U);
    EXPECT_THAT(support::call_log::take(), testing::Contains("tlv_array_get_num_tlvs(+197, 1)").Times(1));
}

TEST_F(next_response, without_payload_says_so) {
    const mts_msg_t message = transport.message(325, {});
    EXPECT_EQ(pm_parse_get_next_port_info(&message, &out.count, &out.records), PM_ERR_NO_PAYLOAD);
    EXPECT_EQ(output.take(), "pm_parse_get_next_port_info: NULL payload \n");
    EXPECT_TRUE(out.untouched_both());
    transport.drop(message);
}

TEST_F(next_response, with_a_status_prints_and_returns_it) {
    EXPECT_EQ(parse(answer(PM_ERR_INVALID_RANGE, 1).append(base_record())), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(output.take(), "pm_parse_get_next_port_info: bad status 4029000A\n");
    EXPECT_EQ(parse(payload().be32(5)), 5U);
    EXPECT_EQ(output.take(), "pm_parse_get_next_port_info: bad status 5\n");
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(next_response, cut_short_anywhere_is_malformed) {
    const bytes good = answer(0, 1).append(base_record());
    for (size_t size = 0; size < good.size(); ++size) {
        ASSERT_EQ(parse(cut(good, size)), PM_ERR_INVALID_PARAM) << size;
        ASSERT_TRUE(out.untouched_both()) << size;
    }
    EXPECT_EQ(allocations(), 0);
}

TEST_F(next_response, without_memory_leaves_its_record_untouched) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(answer(0, 3).append(base_record())), 1U);
    EXPECT_EQ(out.count, 3U);
    EXPECT_EQ(out.records, out.unset());
    EXPECT_THAT(output.take(),
                MatchesRegex(std::string(report_start) + "388\npm_parse_get_next_port_info: no memory\n"));
}

}  // namespace
