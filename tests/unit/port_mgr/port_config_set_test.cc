// SPDX-License-Identifier: Apache-2.0
// A set of one attribute: arguments, request and answer. The ports are of type 1, which the port manager owns.
#include "port_config_fixture.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::answer;
using unit::blocks_and_exchanges;
using unit::cmi_report_start;
using unit::handle;
using unit::is_written;
using unit::queried;
using unit::report_start;
using unit::set_answer;
using unit::set_arguments;
using unit::set_request_of;

constexpr pm_if_index_range_t one_range{0x01020304, 0x01020506};

std::string to_port_manager(const bytes &request) { return queried(2826, 3, request, 43); }

class port_config_set : public unit::set_test {
  protected:
    void expect_sent(const set_arguments &arguments) {
        EXPECT_EQ(set_answered(arguments), 0U);
        EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(set_request_of(arguments))));
    }

    void expect_untouched_and_silent(uint32_t status) {
        EXPECT_EQ(status, PM_ERR_FAILURE);
        EXPECT_TRUE(out.untouched_both());
        EXPECT_THAT(support::call_log::take(), IsEmpty());
    }
};

// ---- arguments

TEST_F(port_config_set, without_a_place_for_entries_is_refused) {
    expect_untouched_and_silent(
        pm_cmi_set_port_config(handle, "a", "b", 1, &one_range, 1, 1, "x", &out.count, nullptr, unit::wait));
}

TEST_F(port_config_set, without_a_place_for_their_count_is_refused) {
    expect_untouched_and_silent(
        pm_cmi_set_port_config(handle, "a", "b", 1, &one_range, 1, 1, "x", nullptr, &out.records, unit::wait));
}

TEST_F(port_config_set, without_ranges_is_refused) {
    expect_untouched_and_silent(
        pm_cmi_set_port_config(handle, "a", "b", 1, nullptr, 1, 1, "x", &out.count, &out.records, unit::wait));
    expect_untouched_and_silent(
        pm_cmi_set_port_config(handle, "a", "b", 0, &one_range, 1, 1, "x", &out.count, &out.records, unit::wait));
}

TEST_F(port_config_set, is_refused_for_its_arguments_before_its_attribute_is_looked_at) {
    expect_untouched_and_silent(
        pm_cmi_set_port_config(0, nullptr, nullptr, 0, nullptr, 0, 0, nullptr, nullptr, nullptr, 0));
}

TEST_F(port_config_set, passes_handle_and_last_argument_on) {
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(
        pm_cmi_set_port_config(0, nullptr, nullptr, 1, &one_range, 1, 1, "x", &out.count, &out.records, 0xfffffffe),
        0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(testing::EndsWith(", 43, 0x0, 4294967294)")));
}

// ---- request

TEST_F(port_config_set, has_these_bytes) {
    transport.will_answer_query(0, set_answer(0, {}));
    const pm_if_index_range_t ranges[] = {{0x01020304, 0x05060708}, {0x090a0b0c, 0x0d0e0f10}};
    const uint16_t value = 0x1112;
    EXPECT_EQ(
        pm_cmi_set_port_config(handle, "who", "where", 2, ranges, 7, 2, &value, &out.count, &out.records, unit::wait),
        0U);
    const bytes request = payload()
                              .append({'w', 'h', 'o'})
                              .fill(57, 0)
                              .append({'w', 'h', 'e', 'r', 'e'})
                              .fill(35, 0)
                              .append({0, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 7, 2, 0x11, 0x12});
    EXPECT_EQ(request.size(), 122U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(request)));
}

TEST_F(port_config_set, puts_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(set_answered({.ranges = {{0x01020304, 0x01020506}}, .type = 5}), 0U);
    const bytes request =
        payload().fill(100, 0).append({0, 1, 0xfe, 0xfd, 0xfc, 0xfb, 0xfe, 0xfd, 0xfa, 0xf9, 5, 1, 0x21});
    EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(request)));
}

TEST_F(port_config_set, carries_every_attribute_that_can_be_written) {
    for (uint32_t type = 0; type < 256; ++type) {
        // These two are sent to Ethernet channels only.
        if (is_written(type) && type != 51 && type != 52) expect_sent({.type = static_cast<uint8_t>(type)});
    }
}

TEST_F(port_config_set, carries_texts_of_every_length_and_none) {
    std::vector<unit::text> firsts = {std::nullopt};
    std::vector<unit::text> seconds = {std::nullopt};
    for (const size_t length : {0, 1, 37, 38, 39, 40, 41, 42, 57, 58, 59, 60, 61, 62, 63, 100}) {
        std::string first;
        std::string second;
        for (size_t i = 0; i < length; ++i) {
            first += static_cast<char>('!' + i % 90);
            second += static_cast<char>('~' - i % 90);
        }
        firsts.emplace_back(first);
        seconds.emplace_back(second);
    }
    for (const auto &first : firsts) {
        for (const auto &second : seconds) expect_sent({.first = first, .second = second});
    }
}

TEST_F(port_config_set, reads_no_text_beyond_its_end) {
    const guarded_bytes first({'a', 'b', 0});
    const guarded_bytes second({'c', 0});
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(
        pm_cmi_set_port_config(handle, reinterpret_cast<char *>(first.data()), reinterpret_cast<char *>(second.data()),
                               1, &one_range, 1, 1, "x", &out.count, &out.records, unit::wait),
        0U);
    const bytes request =
        payload().append({'a', 'b'}).fill(58, 0).u8('c').fill(39, 0).append({0, 1, 1, 2, 3, 4, 1, 2, 5, 6, 1, 1, 'x'});
    EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(request)));
}

TEST_F(port_config_set, reads_no_second_text_beyond_its_field) {
    const guarded_bytes second(bytes(40, 'z'));
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(pm_cmi_set_port_config(handle, "a", reinterpret_cast<char *>(second.data()), 1, &one_range, 1, 1, "x",
                                     &out.count, &out.records, unit::wait),
              0U);
    const bytes request = payload().u8('a').fill(59, 0).fill(40, 'z').append({0, 1, 1, 2, 3, 4, 1, 2, 5, 6, 1, 1, 'x'});
    EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(request)));
}

TEST_F(port_config_set, counts_a_missing_first_text_as_empty) {
    EXPECT_EQ(set_answered({.second = std::string(50, 'z'), .type = 5}), 0U);
    const bytes request = payload().fill(60, 0).fill(40, 'z').append({0, 1, 1, 2, 3, 4, 1, 2, 5, 6, 5, 1, 0x21});
    EXPECT_THAT(support::call_log::take(), testing::Contains(to_port_manager(request)));
}

TEST_F(port_config_set, cuts_a_long_first_text_when_there_is_a_second) {
    const set_arguments alone{.first = std::string(50, 'a')};
    EXPECT_EQ(support::hex(unit::texts_of(alone)), support::hex(payload().fill(50, 'a').fill(50, 0)));
    expect_sent(alone);
    const set_arguments both{.first = std::string(50, 'a'), .second = ""};
    EXPECT_EQ(support::hex(unit::texts_of(both)),
              support::hex(payload().fill(39, 'a').fill(1, 0).fill(10, 'a').fill(50, 0)));
    expect_sent(both);
}

TEST_F(port_config_set, sends_a_value_with_zeros_behind_it_when_its_length_is_longer) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_written(type) || type == 51 || type == 52) continue;
        for (const size_t more : {1, 2, 82, 170})
            expect_sent({.type = static_cast<uint8_t>(type),
                         .length = static_cast<uint8_t>(unit::attribute_width(type) + more)});
    }
}

TEST_F(port_config_set, sends_a_part_of_a_value_when_its_length_is_shorter) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (!is_written(type) || type == 51 || type == 52) continue;
        for (size_t length = 0; length < unit::attribute_width(type); ++length)
            expect_sent({.type = static_cast<uint8_t>(type), .length = static_cast<uint8_t>(length)});
    }
}

TEST_F(port_config_set, counts_ranges_in_16_bits_and_sends_them_all) {
    std::vector<pm_if_index_range_t> ranges;
    for (uint32_t i = 0; i < 0x10002; ++i) ranges.push_back({0x01000000 + i, 0x01000000 + 2 * i});
    expect_sent({.ranges = ranges});
    ranges.resize(0xffff);
    expect_sent({.ranges = ranges});
    ranges.resize(0x102);
    expect_sent({.ranges = ranges});
}

TEST_F(port_config_set, reads_no_range_beyond_the_last) {
    const guarded_bytes ranges({4, 3, 2, 1, 8, 7, 6, 5});
    transport.will_answer_query(0, set_answer(0, {}));
    EXPECT_EQ(pm_cmi_set_port_config(handle, nullptr, nullptr, 1,
                                     reinterpret_cast<const pm_if_index_range_t *>(ranges.data()), 1, 1, "x",
                                     &out.count, &out.records, unit::wait),
              0U);
}

// ---- blocks

TEST_F(port_config_set, frees_its_copy_before_and_its_request_after_the_exchange) {
    transport.will_answer_query(0, set_answer(0, {0x01020304, 0x01020305}));
    const set_arguments arguments{.first = "a", .type = 1};
    EXPECT_EQ(set(arguments), 0U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(113)", "malloc(113)", "free(113)", to_port_manager(set_request_of(arguments)),
                            "malloc(16)", "free(answer)", "free(113)"));
    expect_entries({0x01020304, 0x01020305});
}

TEST_F(port_config_set, without_memory_for_its_request_sends_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(set({.ranges = {one_range, one_range}, .type = 9}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("128\npm_cmi_set_port_config: malloc "
                                                                           "failure, size\\(128\\)\n")));
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(128) fails"));
    expect_no_entries();
}

TEST_F(port_config_set, without_memory_for_its_copy_sends_nothing_and_frees_its_request) {
    heap.fail_allocation(2);
    EXPECT_EQ(set({.ranges = {one_range, one_range}, .type = 9}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("128\npm_cmi_set_port_config: malloc "
                                                                           "failure, size\\(128\\)\n")));
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(128)", "malloc(128) fails", "free(128)"));
    expect_no_entries();
}

TEST_F(port_config_set, without_memory_for_its_entries_frees_everything_and_keeps_their_count) {
    heap.fail_allocation(3);
    transport.will_answer_query(0, set_answer(5, {0x01020304, 0x01020305}));
    EXPECT_EQ(set({.type = 1}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(report_start + std::string("16\n")));
    EXPECT_EQ(out.count, 2U);
    EXPECT_EQ(out.records, nullptr);
}

TEST_F(port_config_set, without_memory_does_not_look_at_its_attribute) {
    heap.fail_allocation(1);
    EXPECT_EQ(set({.type = 0, .length = 0}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + std::string("112\npm_cmi_set_port_config: malloc "
                                                                           "failure, size\\(112\\)\n")));
}

TEST_F(port_config_set, that_does_not_fit_in_32_bits_is_a_failed_allocation) {
    const std::pair<uint32_t, uint8_t> sizes[] = {{0x1ffffff2, 8}, {0x1ffffff3, 0},    {0x1ffffff3, 4},
                                                  {0x20000000, 1}, {0x3ffffff3, 0x7f}, {0xffffffff, 255}};
    for (const auto &[count, length] : sizes) {
        out = {};
        EXPECT_EQ(pm_cmi_set_port_config(handle, "a", "b", count, &one_range, 1, length, "x", &out.count, &out.records,
                                         unit::wait),
                  1U);
        const std::string size = std::to_string(static_cast<int32_t>(104 + 8 * count + length));
        EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + size + "\npm_cmi_set_port_config: malloc failure, " +
                                                "size\\(" + size + "\\)\n"));
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), IsEmpty());
        expect_no_entries();
    }
}

TEST_F(port_config_set, that_just_fits_in_32_bits_is_allocated) {
    heap.fail_allocation(1);
    EXPECT_EQ(pm_cmi_set_port_config(handle, "a", "b", 0x1ffffff2, &one_range, 1, 7, "x", &out.count, &out.records,
                                     unit::wait),
              1U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(4294967295) fails"));
    EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start +
                                            std::string("-1\npm_cmi_set_port_config: malloc failure, size\\(-1\\)\n")));
}

// ---- encoder

TEST_F(port_config_set, of_an_attribute_that_cannot_be_written_sends_nothing) {
    for (const uint32_t type : {0U, 10U, 79U, 82U, 86U, 255U}) {
        EXPECT_EQ(set({.type = static_cast<uint8_t>(type), .length = 4}), PM_ERR_TLV) << type;
        EXPECT_EQ(output.take(), "pm_encode_tlv: Type not handled - " + std::to_string(type) +
                                     "\npm_cmi_set_port_config: err(1076428804) in pm_encode_tlv\n");
        EXPECT_THAT(assertions.take(), ElementsAre("config_attribute.cc: pm_encode_tlv"));
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(116)", "free(116)"));
        expect_no_entries();
    }
}

TEST_F(port_config_set, without_a_value_leaves_the_report_to_the_encoder) {
    EXPECT_EQ(pm_cmi_set_port_config(handle, nullptr, nullptr, 1, &one_range, 0, 0, nullptr, &out.count, &out.records,
                                     unit::wait),
              PM_ERR_TLV);
    EXPECT_THAT(assertions.take(),
                ElementsAre("config_attribute.cc: pm_encode_tlv", "config_attribute.cc: pm_encode_tlv"));
    output.take();
}

// ---- answers

class set_result : public port_config_set {
  protected:
    uint32_t set_answered_with(const support::bytes &content) {
        release();
        transport.will_answer_query(0, content);
        const uint32_t status = set({.type = 1});
        EXPECT_EQ(heap.live_blocks(), out.records != nullptr ? 1 : 0);
        return status;
    }
};

TEST_F(set_result, is_the_answers_status_and_its_entries) {
    for (const uint32_t status : {0U, 1U, 5U, PM_ERR_REJECTED, 0xffffffffU}) {
        EXPECT_EQ(set_answered_with(set_answer(status, {0x01020304, 0x05060708, 0x01020304})), status);
        expect_entries({0x01020304, 0x05060708, 0x01020304});
    }
}

TEST_F(set_result, has_an_empty_block_when_there_are_no_entries) {
    EXPECT_EQ(set_answered_with(set_answer(7, {})), 7U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_TRUE(heap.is_live(out.records));
}

TEST_F(set_result, ignores_what_follows_the_entries) {
    EXPECT_EQ(set_answered_with(set_answer(0, {0x01020304}).fill(7, 0xee)), 0U);
    expect_entries({0x01020304});
}

TEST_F(set_result, is_an_error_when_the_answer_is_empty) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(set({.type = 1}), PM_ERR_NO_PAYLOAD);
    expect_no_entries();
}

TEST_F(set_result, is_an_error_when_the_answer_is_too_short_for_a_count) {
    for (uint32_t size = 0; size < 8; ++size) {
        EXPECT_EQ(set_answered_with(bytes(size, 0)), PM_ERR_INVALID_PARAM) << size;
        expect_no_entries();
    }
}

TEST_F(set_result, is_the_status_when_the_answer_is_too_short_for_a_count) {
    for (uint32_t size = 4; size < 8; ++size) {
        EXPECT_EQ(set_answered_with(unit::cut(payload().be32(0x01020304).be32(0), size)), 0x01020304U) << size;
        expect_no_entries();
    }
    for (uint32_t size = 1; size < 4; ++size)
        EXPECT_EQ(set_answered_with(bytes(size, 1)), PM_ERR_INVALID_PARAM) << size;
}

TEST_F(set_result, is_an_error_when_the_answer_cannot_hold_its_entries) {
    for (const uint32_t count : {3U, 4U, 0x1fffffffU, 0x20000000U, 0x20000002U, 0x80000000U, 0xffffffffU}) {
        EXPECT_EQ(set_answered_with(answer(0, count).fill(23, 1)), PM_ERR_INVALID_PARAM) << count;
        expect_no_entries();
        EXPECT_EQ(set_answered_with(answer(5, count).fill(23, 1)), 5U) << count;
        expect_no_entries();
    }
    EXPECT_EQ(set_answered_with(answer(0, 1).fill(7, 1)), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(set_answered_with(answer(0, 2).fill(15, 1)), PM_ERR_INVALID_PARAM);
}

TEST_F(set_result, is_read_as_far_as_the_length_that_came_back) {
    transport.will_answer_query(0, set_answer(0, {0x01020304, 0x05060708}), 16);
    EXPECT_EQ(set({.type = 1}), PM_ERR_INVALID_PARAM);
    expect_no_entries();
}

TEST_F(set_result, is_the_status_of_a_failed_exchange) {
    for (const uint32_t status : {1U, 110U, PM_ERR_REJECTED, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(set({.type = 1}), status);
        expect_no_entries();
    }
}

TEST_F(set_result, frees_the_answer_of_a_failed_exchange_unread) {
    transport.will_answer_query(113, set_answer(0, {0x01020304}));
    EXPECT_EQ(set({.type = 1}), 113U);
    EXPECT_EQ(heap.live_blocks(), 0);
    expect_no_entries();
}

}  // namespace
