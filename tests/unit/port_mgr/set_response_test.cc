// SPDX-License-Identifier: Apache-2.0
#include "guarded_bytes.h"
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::answer;
using unit::parse_test;
using unit::report_start;
using unit::untouched;

class set_response : public parse_test<pm_set_port_result_t> {
  protected:
    uint32_t parse(const bytes &content) {
        const guarded_bytes wire(content);
        return pm_parse_set_port_info_res_payload(wire.data(), &out.count, &out.records);
    }
};

TEST_F(set_response, has_its_first_words_converted_and_its_second_words_as_they_are) {
    EXPECT_EQ(parse(answer(0, 2).be32(0x01020304).be32(0x05060708).be32(0x090a0b0c).be32(0x0d0e0f10)), 0U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(support::hex(out.records, 16),
              "04030201"
              "05060708"
              "0c0b0a09"
              "0d0e0f10");
    EXPECT_EQ(out.records[0].if_index, 0x01020304U);
    EXPECT_EQ(out.records[1].status, __builtin_bswap32(0x0d0e0f10));
    EXPECT_THAT(support::call_log::take(), testing::Contains("malloc(16)").Times(1));
}

TEST_F(set_response, has_no_place_without_both_outputs) {
    const guarded_bytes wire(answer(0, 1).be32(1).be32(0));
    EXPECT_EQ(pm_parse_set_port_info_res_payload(wire.data(), &out.count, nullptr), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(out.count, untouched);
    EXPECT_EQ(pm_parse_set_port_info_res_payload(wire.data(), nullptr, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(out.records, nullptr);
}

TEST_F(set_response, with_a_status_returns_it_with_its_entries) {
    EXPECT_EQ(parse(answer(5, 2).be32(1).be32(0).be32(2).be32(0x40290009)), 5U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(support::hex(out.records, 16),
              "01000000"
              "00000000"
              "02000000"
              "40290009");
}

TEST_F(set_response, without_entries_has_what_the_allocator_gives_for_nothing) {
    EXPECT_EQ(parse(answer(0, 0)), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_TRUE(heap.is_live(out.records));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(0)"));
}

TEST_F(set_response, without_entries_returns_its_status) {
    EXPECT_EQ(parse(answer(PM_ERR_REJECTED, 0)), PM_ERR_REJECTED);
    EXPECT_EQ(out.count, 0U);
}

TEST_F(set_response, without_payload_has_a_null_array) {
    EXPECT_EQ(pm_parse_set_port_info_res_payload(nullptr, &out.count, &out.records), PM_ERR_NO_PAYLOAD);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_EQ(out.count, untouched);
}

TEST_F(set_response, without_memory_has_a_null_array_and_not_its_status) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(answer(5, 2).fill(16, 0)), 1U);
    EXPECT_EQ(out.count, 2U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(output.take(), MatchesRegex(std::string(report_start) + "16\n"));
}

TEST_F(set_response, whose_entries_do_not_fit_in_memory_is_a_failed_allocation) {
    for (const uint32_t count : {0x10000000U, 0x20000000U, 0x20000001U, 0xffffffffU}) {
        heap.fail_allocation(1);
        EXPECT_EQ(parse(answer(0, count)), 1U) << count;
        EXPECT_EQ(out.count, count);
        EXPECT_EQ(out.records, nullptr);
        const std::string size = std::to_string(static_cast<int32_t>(count * 8));
        EXPECT_THAT(output.take(), MatchesRegex(report_start + size + "\n"));
    }
    if (sizeof(size_t) == 4) {
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
}

}  // namespace
