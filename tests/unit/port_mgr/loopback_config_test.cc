// SPDX-License-Identifier: Apache-2.0
#include "sub_interface_fixture.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::blocks_and_exchanges;
using unit::calls;
using unit::cmi_report_start;
using unit::handle;
using unit::queried;
using unit::range_list;

constexpr uint32_t needed_bit = 0x4000;
constexpr pm_if_index_range_t one_range{0x14000001, 0x14000005};

class loopback_config : public support::library_test {
  protected:
    static uint32_t configure(uint32_t flag, const std::vector<pm_if_index_range_t> &ranges,
                              uint32_t mask_low = needed_bit, uint32_t mask_high = 0) {
        const range_list list(ranges);
        return pm_cli_config_loopback_interface(handle, flag, mask_low, mask_high, list.pointer(), unit::wait);
    }
};

TEST_F(loopback_config, sends_the_ranges_as_they_are) {
    const std::vector<pm_if_index_range_t> ranges{{0x01020304, 0x05060708}, {0x090a0b0c, 0x0d0e0f10}};
    transport.will_answer_query(0, bytes{1, 2, 3, 4});
    EXPECT_EQ(configure(1, ranges), 0U);
    const bytes request = {0, 0, 0, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const calls log = support::call_log::take();
    EXPECT_EQ(blocks_and_exchanges(log)[0], "malloc(20)");
    EXPECT_EQ(blocks_and_exchanges(log)[1], queried(61468, 3, request, 175));
    EXPECT_THAT(blocks_and_exchanges(log),
                testing::UnorderedElementsAre("malloc(20)", testing::_, "free(20)", "free(answer)"));
    EXPECT_THAT(log, testing::Not(testing::Contains(testing::StartsWith("if_index_get_type"))));
}

TEST_F(loopback_config, puts_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    transport.will_answer_query(0, {});
    EXPECT_EQ(configure(1, {{0x01020304, 0x05060708}}), 0U);
    const bytes request = {0, 0, 0, 1, 0xfe, 0xfd, 0xfc, 0xfb, 0xfa, 0xf9, 0xf8, 0xf7};
    EXPECT_THAT(support::call_log::take(), testing::Contains(queried(61468, 3, request, 175)));
}

TEST_F(loopback_config, counts_ranges_in_32_bits) {
    const std::vector<pm_if_index_range_t> ranges(0x10203, one_range);
    payload request;
    request.be32(0x10203);
    for (const auto &range : ranges) request.be32(range.first).be32(range.last);
    transport.will_answer_query(0, {});
    EXPECT_EQ(configure(1, ranges), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(queried(61468, 3, request, 175)));
}

TEST_F(loopback_config, sends_no_ranges_when_there_are_none) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(configure(1, {}), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(4)", queried(61468, 3, {0, 0, 0, 0}, 175), "free(4)"));
}

TEST_F(loopback_config, creates_by_any_flag_but_0) {
    const std::pair<uint32_t, uint32_t> kinds[] = {{0, 4}, {1, 3}, {4, 3}, {5, 3}, {256, 3}, {0x80000000, 3}};
    const bytes request = payload().be32(1).be32(one_range.first).be32(one_range.last);
    for (const auto &[flag, kind] : kinds) {
        transport.will_answer_query(0, {});
        EXPECT_EQ(configure(flag, {one_range}), 0U);
        EXPECT_THAT(support::call_log::take(), testing::Contains(queried(61468, kind, request, 175))) << flag;
    }
}

TEST_F(loopback_config, passes_handle_and_last_argument_on) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(pm_cli_config_loopback_interface(0xfffffffd, 0, needed_bit, 0, range_list({}).pointer(), 0xfffffffe), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains("cmi_req_resp(61468, 4, <00000000>, 4, 0, 0, 175, 0xfffffffd, 4294967294)"));
}

TEST_F(loopback_config, needs_its_kind_in_the_lower_half_of_the_mask) {
    for (uint32_t bit = 0; bit < 32; ++bit) {
        const uint32_t mask = 1U << bit;
        if (bit == 14) {
            transport.will_answer_query(0, {});
            EXPECT_EQ(configure(1, {one_range}, mask), 0U);
            support::call_log::take();
            continue;
        }
        EXPECT_EQ(configure(1, {one_range}, mask, needed_bit), PM_ERR_REJECTED) << bit;
        EXPECT_EQ(output.take(), fmt::format("Iface mask:{:#x}\n", uint64_t{needed_bit} << 32 | mask));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
}

TEST_F(loopback_config, prints_the_whole_mask_when_it_is_refused) {
    EXPECT_EQ(configure(1, {one_range}, ~needed_bit, 0x89abcdef), PM_ERR_REJECTED);
    EXPECT_EQ(output.take(), "Iface mask:0x89abcdefffffbfff\n");
    EXPECT_EQ(configure(1, {one_range}, 0, 0), PM_ERR_REJECTED);
    EXPECT_EQ(output.take(), "Iface mask:0x0\n");
}

TEST_F(loopback_config, takes_a_mask_with_more_kinds) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(configure(1, {one_range}, 0xffffffff, 0xffffffff), 0U);
}

TEST_F(loopback_config, does_not_look_at_its_answer) {
    const bytes answers[] = {bytes{}, bytes{1}, payload().be32(5).be32(PM_ERR_REJECTED), bytes(100, 0xff)};
    for (const bytes &content : answers) {
        transport.will_answer_query(0, content);
        EXPECT_EQ(configure(0, {one_range}), 0U);
        EXPECT_EQ(heap.live_blocks(), 0);
    }
}

TEST_F(loopback_config, returns_the_status_of_the_exchange_and_frees_everything) {
    for (const uint32_t status : {1U, 113U, PM_ERR_INVALID_RANGE, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(configure(0, {one_range}), status);
        transport.will_answer_query(status, bytes(8, 0));
        EXPECT_EQ(configure(1, {one_range}), status);
        EXPECT_EQ(heap.live_blocks(), 0);
    }
}

TEST_F(loopback_config, without_memory_sends_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(configure(1, {one_range, one_range}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("20\n")));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(20) fails"));
}

TEST_F(loopback_config, that_does_not_fit_in_32_bits_is_a_failed_allocation) {
    for (const uint32_t count : {0x20000000U, 0x1fffffffU + 0x10U, 0x40000000U, 0xffffffffU}) {
        const uint32_t words[3] = {0, count, 0};
        EXPECT_EQ(pm_cli_config_loopback_interface(handle, 1, needed_bit, 0,
                                                   reinterpret_cast<const pm_if_range_list_t *>(words), 1),
                  1U);
        EXPECT_THAT(output.take(),
                    MatchesRegex(cmi_report_start + fmt::format("{}\n", static_cast<int32_t>(4 + 8 * count))));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
}

TEST_F(loopback_config, that_just_fits_in_32_bits_is_allocated) {
    heap.fail_allocation(1);
    const uint32_t words[3] = {0, 0x1fffffff, 0};
    EXPECT_EQ(pm_cli_config_loopback_interface(handle, 1, needed_bit, 0,
                                               reinterpret_cast<const pm_if_range_list_t *>(words), 1),
              1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(4294967292) fails"));
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("-4\n")));
}

TEST_F(loopback_config, without_ranges_is_refused) {
    EXPECT_EQ(pm_cli_config_loopback_interface(handle, 1, needed_bit, 0, nullptr, 1), PM_ERR_FAILURE);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

}  // namespace
