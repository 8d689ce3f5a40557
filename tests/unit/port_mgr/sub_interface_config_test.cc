// SPDX-License-Identifier: Apache-2.0
// Sub-interfaces by ranges.
#include <algorithm>

#include "sub_interface_fixture.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::blocks_and_exchanges;
using unit::calls;
using unit::cmi_report_start;
using unit::entry_of;
using unit::handle;
using unit::range_list;
using unit::sent_sub_interfaces;
using unit::status_answer;
using unit::wait;

constexpr if_index_t main_a = 0x02011000;
constexpr if_index_t main_b = 0x02022000;
constexpr uint32_t needed_bits = 0x00b00012;

class sub_interface_ranges : public support::library_test {
  protected:
    static uint32_t configure(uint32_t flag, const std::vector<pm_if_index_range_t> &ranges, uint32_t mask_low = 2,
                              uint32_t mask_high = 0) {
        const range_list list(ranges);
        return pm_cli_config_sub_interface(handle, flag, mask_low, mask_high, list.pointer(), wait);
    }

    calls configured(const std::vector<pm_if_index_range_t> &ranges) {
        transport.will_answer_query(0, status_answer(0));
        EXPECT_EQ(configure(1, ranges), 0U);
        return support::call_log::take();
    }

    void expect_refused(uint32_t status, const std::vector<pm_if_index_range_t> &ranges) {
        EXPECT_EQ(configure(1, ranges), status);
        const std::string size = std::to_string(12 + 536 * ranges.size());
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                    ElementsAre("malloc(" + size + ")", "free(" + size + ")"));
    }
};

TEST_F(sub_interface_ranges, of_one_main_interface_make_one_entry_with_their_bits) {
    const bytes request = sent_sub_interfaces(1, {entry_of(main_a, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20})});
    EXPECT_EQ(request.size(), 548U);
    EXPECT_THAT(configured({{main_a + 10, main_a + 20}}),
                ElementsAre("malloc(548)", "if_index_get_type(0x0201100a)", "if_index_get_type(0x0201100a)",
                            "if_index_get_mainintf_from_subintf(0x0201100a)", "if_index_get_sub_intf(0x0201100a)",
                            "if_index_get_sub_intf(0x02011014)", "bitset_clear(size 512)", "bitset_set_range(10, 11)",
                            unit::sub_interfaces_asked(request), "free(answer)", "free(548)"));
}

TEST_F(sub_interface_ranges, have_these_bytes) {
    payload request;
    request.be32(2).be32(0).be32(1);
    request.be32(0).append({2, 1, 0x10, 0}).fill(12, 0);
    // The size is as it lies in memory. Number 8 is the first bit of the second byte.
    request.append({0, 2, 0, 0}).fill(1, 0).append({0xc0}).fill(510, 0);
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(configure(0, {{main_a + 8, main_a + 9}}), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(unit::sub_interfaces_asked(request)));
}

TEST_F(sub_interface_ranges, put_main_interfaces_on_the_wire_by_a_plain_swap) {
    interfaces.wire_mask = 0xffffffff;
    const calls log = configured({{main_a + 10, main_a + 10}});
    EXPECT_THAT(log, testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(main_a, {10})}))));
    EXPECT_THAT(log, testing::Not(testing::Contains(testing::StartsWith("hton_if_index"))));
}

TEST_F(sub_interface_ranges, are_created_by_any_flag_but_0) {
    const std::vector<std::pair<uint32_t, uint32_t>> operations{{0, 2}, {1, 1},   {2, 1},
                                                                {5, 1}, {256, 1}, {0x80000000, 1}};
    for (const auto &[flag, operation] : operations) {
        transport.will_answer_query(0, status_answer(0));
        EXPECT_EQ(configure(flag, {{main_a + 5, main_a + 5}}), 0U);
        EXPECT_THAT(
            support::call_log::take(),
            testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(operation, {entry_of(main_a, {5})}))));
    }
}

TEST_F(sub_interface_ranges, of_the_first_main_interface_share_its_entry) {
    const bytes request = sent_sub_interfaces(1, {entry_of(main_a, {5, 7, 9}), entry_of(main_b, {6})});
    const calls log = configured(
        {{main_a + 5, main_a + 5}, {main_b + 6, main_b + 6}, {main_a + 7, main_a + 7}, {main_a + 9, main_a + 9}});
    EXPECT_THAT(blocks_and_exchanges(log),
                ElementsAre("malloc(2156)", unit::sub_interfaces_asked(request), "free(answer)", "free(2156)"));
    EXPECT_EQ(std::ranges::count(log, "bitset_clear(size 512)"), 2);
}

TEST_F(sub_interface_ranges, of_any_other_main_interface_get_an_entry_each) {
    const bytes request =
        sent_sub_interfaces(1, {entry_of(main_a, {5}), entry_of(main_b, {6}), entry_of(main_b, {6, 7})});
    EXPECT_EQ(blocks_and_exchanges(
                  configured({{main_a + 5, main_a + 5}, {main_b + 6, main_b + 6}, {main_b + 6, main_b + 7}})),
              (calls{"malloc(1620)", unit::sub_interfaces_asked(request), "free(answer)", "free(1620)"}));
}

TEST_F(sub_interface_ranges, are_all_of_the_first_main_interface_or_not) {
    EXPECT_THAT(configured({{main_a + 5, main_a + 5}, {main_b + 6, main_b + 6}, {main_a + 7, main_a + 7}}),
                testing::Contains(unit::sub_interfaces_asked(
                    sent_sub_interfaces(1, {entry_of(main_a, {5, 7}), entry_of(main_b, {6})}))));
}

TEST_F(sub_interface_ranges, have_the_main_interface_that_the_platform_names) {
    interfaces.special_types[0x77777777] = 0;
    numbers.special_mains = {{main_a + 5, 0x77777777}};
    EXPECT_THAT(configured({{main_a + 5, main_a + 5}}),
                testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(0x77777777, {5})}))));
}

TEST_F(sub_interface_ranges, each_have_their_own_bit) {
    for (uint32_t number = 0; number < 4096; ++number) {
        EXPECT_THAT(
            configured({{main_a + number, main_a + number}}),
            testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(main_a, {number})}))));
    }
}

TEST_F(sub_interface_ranges, end_where_their_last_index_does_whatever_its_main_interface_and_type_are) {
    interfaces.without_type = {0x01013014};
    EXPECT_THAT(configured({{main_a + 19, 0x01013014}}),
                testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(main_a, {19, 20})}))));
}

TEST_F(sub_interface_ranges, that_run_backwards_count_as_it_stands) {
    numbers.special_sub_interfaces = {{main_b, 0xffff}};
    EXPECT_THAT(configured({{main_a + 21, main_a + 20}}), testing::Contains("bitset_set_range(21, 0)"));
    EXPECT_THAT(configured({{main_a + 20, main_a + 10}}), testing::Contains("bitset_set_range(20, 4294967287)"));
    EXPECT_THAT(configured({{main_b, main_a}}), testing::Contains("bitset_set_range(65535, 4294901762)"));
    EXPECT_THAT(configured({{main_a, main_b}}), testing::Contains("bitset_set_range(0, 65536)"));
}

TEST_F(sub_interface_ranges, that_are_none_send_no_entries) {
    EXPECT_THAT(configured({}), ElementsAre("malloc(12)", unit::sub_interfaces_asked(payload().be32(1).be32(0).be32(0)),
                                            "free(answer)", "free(12)"));
}

TEST_F(sub_interface_ranges, need_one_of_five_kinds_in_the_lower_half_of_the_mask) {
    for (uint32_t bit = 0; bit < 32; ++bit) {
        const uint32_t mask = 1U << bit;
        if (bit == 1 || bit == 4 || bit == 20 || bit == 21 || bit == 23) {
            transport.will_answer_query(0, status_answer(0));
            EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, mask), 0U) << bit;
        } else {
            EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, mask), PM_ERR_REJECTED) << bit;
            EXPECT_EQ(output.take(), fmt::format("Iface mask:{:#x}\n", mask));
        }
    }
}

TEST_F(sub_interface_ranges, with_more_kinds_in_the_mask_are_taken) {
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, 0xffffffff, 0xffffffff), 0U);
}

TEST_F(sub_interface_ranges, without_the_kinds_are_refused_and_print_the_whole_mask) {
    EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, 0, needed_bits), PM_ERR_REJECTED);
    EXPECT_EQ(output.take(), "Iface mask:0xb0001200000000\n");
    EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, ~needed_bits, 0x89abcdef), PM_ERR_REJECTED);
    EXPECT_EQ(output.take(), "Iface mask:0x89abcdefff4fffed\n");
    EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}, 0, 0), PM_ERR_REJECTED);
    EXPECT_EQ(output.take(), "Iface mask:0x0\n");
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sub_interface_ranges, must_have_a_type_with_sub_interfaces) {
    for (uint32_t type = 0; type < 256; ++type) {
        const if_index_t first = type << 24 | 0x5005;
        if (type == 2 || type == 4 || type == 22 || type == 26) {
            EXPECT_THAT(
                configured({{first, first}}),
                testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(first - 5, {5})}))));
        } else {
            EXPECT_EQ(configure(1, {{first, first}}), PM_ERR_INVALID_RANGE) << type;
            EXPECT_THAT(support::call_log::take(),
                        ElementsAre("malloc(548)", fmt::format("if_index_get_type({:#010x})", first), "free(548)"));
        }
    }
}

TEST_F(sub_interface_ranges, without_a_type_are_refused) {
    interfaces.without_type = {main_a + 5};
    expect_refused(PM_ERR_INVALID_RANGE, {{main_a + 5, main_a + 5}});
    interfaces.stores_untold_types = true;
    interfaces.without_type_result = 3;
    expect_refused(PM_ERR_INVALID_RANGE, {{main_a + 5, main_a + 5}});
}

TEST_F(sub_interface_ranges, whose_type_is_lost_or_another_when_looked_at_again_are_refused) {
    const support::scripted_look<uint8_t> second_looks[] = {{-1, std::nullopt}, {-1, 2}, {5, 2}, {0, 4}, {0, 0}};
    for (const auto &look : second_looks) {
        interfaces.type_looks = {{0, 2}, look};
        EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}}), PM_ERR_INVALID_RANGE);
        EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(548)", "if_index_get_type(0x02011005)",
                                                           "if_index_get_type(0x02011005)", "free(548)"));
    }
}

TEST_F(sub_interface_ranges, whose_numbers_cannot_be_told_are_rejected) {
    for (const bool stores : {false, true}) {
        numbers.stores_on_failure = stores;
        for (const if_index_t index : {main_a + 5, main_a + 6}) {
            numbers.without_sub_interface = {index};
            expect_refused(PM_ERR_REJECTED, {{main_a + 5, main_a + 6}});
        }
    }
    numbers.failure = 1;
    expect_refused(PM_ERR_REJECTED, {{main_a + 5, main_a + 6}});
}

TEST_F(sub_interface_ranges, are_all_refused_when_a_later_one_is) {
    expect_refused(PM_ERR_INVALID_RANGE, {{main_a + 5, main_a + 5}, {main_b + 5, main_b + 5}, {0x01000000, main_a}});
    numbers.without_sub_interface = {main_b + 5};
    expect_refused(PM_ERR_REJECTED, {{main_a + 5, main_a + 5}, {main_a + 5, main_b + 5}});
}

TEST_F(sub_interface_ranges, are_read_as_a_list_of_words) {
    // Words 0 and 2 are not read, and nothing behind the last range.
    const guarded_bytes list(
        {0xee, 0xee, 0xee, 0xee, 1, 0, 0, 0, 0xdd, 0xdd, 0xdd, 0xdd, 5, 0x10, 1, 2, 6, 0x10, 1, 2});
    transport.will_answer_query(0, status_answer(0));
    EXPECT_EQ(pm_cli_config_sub_interface(handle, 1, 2, 0, reinterpret_cast<pm_if_range_list_t *>(list.data()), wait),
              0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains(unit::sub_interfaces_asked(sent_sub_interfaces(1, {entry_of(main_a, {5, 6})}))));
}

TEST_F(sub_interface_ranges, that_are_missing_are_refused) {
    EXPECT_EQ(pm_cli_config_sub_interface(handle, 1, 2, 0, nullptr, wait), PM_ERR_FAILURE);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(sub_interface_ranges, without_memory_send_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(configure(1, {{main_a + 5, main_a + 5}, {main_b, main_b}}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("1084\n")));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(1084) fails"));
}

TEST_F(sub_interface_ranges, that_do_not_fit_in_32_bits_are_a_failed_allocation) {
    // 8012998 entries are the most that fit.
    for (const uint32_t count : {8012999U, 8013000U, 0x10000000U, 0x20000000U, 0xffffffffU}) {
        const uint32_t words[3] = {0, count, 0};
        EXPECT_EQ(pm_cli_config_sub_interface(handle, 1, 2, 0, reinterpret_cast<const pm_if_range_list_t *>(words), 1),
                  1U);
        EXPECT_THAT(output.take(),
                    MatchesRegex(cmi_report_start + fmt::format("{}\n", static_cast<int32_t>(12 + 536 * count))));
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
}

TEST_F(sub_interface_ranges, that_just_fit_in_32_bits_are_allocated) {
    heap.fail_allocation(1);
    const uint32_t words[3] = {0, 8012998, 0};
    EXPECT_EQ(pm_cli_config_sub_interface(handle, 1, 2, 0, reinterpret_cast<const pm_if_range_list_t *>(words), 1), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(4294966940) fails"));
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("-356\n")));
}

}  // namespace
