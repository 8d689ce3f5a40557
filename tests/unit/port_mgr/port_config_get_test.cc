// SPDX-License-Identifier: Apache-2.0
// Reading the configuration of interfaces: which service is asked, the request and the answer.
#include "base_record.h"
#include "port_config_fixture.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::answer;
using unit::base_record_of;
using unit::blocks_and_exchanges;
using unit::bytes_of;
using unit::calls;
using unit::cmi_report_start;
using unit::expected_record;
using unit::handle;
using unit::queried;
using unit::report_start;

constexpr pm_if_index_range_t one_range{0x01020304, 0x01020506};

bytes get_request(const std::vector<pm_if_index_range_t> &ranges) {
    payload request;
    request.fill(11, 0).be32(static_cast<uint32_t>(ranges.size()));
    for (const auto &range : ranges) request.be32(range.first).be32(range.last);
    return request;
}

std::string asked_member(if_index_t channel) {
    return "cmi_req_resp(624, 2, <" + support::hex(payload().be32(channel).fill(524, 0)) +
           ">, 528, 0, 0, 34, 0x55667788, 5)";
}

class port_config_get : public unit::parse_test<pm_port_info_t> {
  protected:
    uint32_t get(uint32_t kind, const std::vector<pm_if_index_range_t> &ranges) {
        return pm_cmi_get_port_config(handle, kind, static_cast<uint32_t>(ranges.size()), ranges.data(), &out.count,
                                      &out.records, unit::wait);
    }

    // A get about one interface that is answered without records: its exchanges, and what is freed.
    calls get_answered(uint32_t kind, if_index_t index) {
        transport.will_answer_query(0, answer(0, 0));
        EXPECT_EQ(get(kind, {{index, index + 1}}), 0U);
        return blocks_and_exchanges(support::call_log::take());
    }

    static calls asked(uint32_t kind, if_index_t index, uint32_t sap) {
        return {"malloc(23)", queried(2827, kind, get_request({{index, index + 1}}), sap), "free(23)", "free(answer)"};
    }

    void expect_no_records() {
        EXPECT_EQ(out.count, 0U);
        EXPECT_EQ(out.records, nullptr);
    }
};

// ---- arguments

TEST_F(port_config_get, without_a_place_for_its_results_or_without_ranges_is_refused) {
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 1, &one_range, nullptr, &out.records, 1), PM_ERR_FAILURE);
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 1, &one_range, &out.count, nullptr, 1), PM_ERR_FAILURE);
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 1, nullptr, &out.count, &out.records, 1), PM_ERR_FAILURE);
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 0, &one_range, &out.count, &out.records, 1), PM_ERR_FAILURE);
    EXPECT_TRUE(out.untouched_both());
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(port_config_get, passes_kind_handle_and_last_argument_on) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(pm_cmi_get_port_config(0, 0xfffffffd, 1, &one_range, &out.count, &out.records, 0xfffffffe), 0U);
    EXPECT_THAT(
        blocks_and_exchanges(support::call_log::take()),
        testing::Contains("cmi_req_resp(2827, 4294967293, <0000000000000000000000000000010102030401020506>, 23, "
                          "0, 0, 43, 0x0, 4294967294)"));
}

// ---- request

TEST_F(port_config_get, has_these_bytes) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(get(1, {{0x01020304, 0x05060708}, {0x090a0b0c, 0x0d0e0f10}}), 0U);
    const bytes request =
        payload().fill(11, 0).append({0, 0, 0, 2, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(31)", queried(2827, 1, request, 43), "free(31)", "free(answer)"));
}

TEST_F(port_config_get, counts_ranges_in_32_bits) {
    const std::vector<pm_if_index_range_t> ranges(0x10203, one_range);
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(get(1, ranges), 0U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                testing::Contains(queried(2827, 1, get_request(ranges), 43)));
}

TEST_F(port_config_get, puts_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(get(1, {one_range}), 0U);
    const bytes request = payload().fill(11, 0).append({0, 0, 0, 1, 0xfe, 0xfd, 0xfc, 0xfb, 0xfe, 0xfd, 0xfa, 0xf9});
    EXPECT_THAT(support::call_log::take(), testing::Contains(queried(2827, 1, request, 43)));
}

TEST_F(port_config_get, reads_no_range_beyond_the_last) {
    const guarded_bytes ranges({4, 3, 2, 1, 8, 7, 6, 5});
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 1, reinterpret_cast<const pm_if_index_range_t *>(ranges.data()),
                                     &out.count, &out.records, 1),
              0U);
}

// ---- destination

TEST_F(port_config_get, goes_to_the_owner_of_the_first_index_but_for_type_22) {
    for (const uint32_t kind : {0U, 1U, 2U, 3U, 258U}) {
        for (uint32_t type = 0; type < 256; ++type) {
            if (kind == 2 && (type == 4 || type == 22)) continue;
            uint32_t sap = 43;
            if (type == 2) sap = 45;
            if (type == 5) sap = 179;
            if (type == 20 || type == 22 || type == 26) sap = 175;
            EXPECT_EQ(get_answered(kind, type << 24 | 0x1000), asked(kind, type << 24 | 0x1000, sap)) << type;
        }
    }
}

TEST_F(port_config_get, takes_the_first_index_of_the_first_range) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(get(2, {{0x05000000, 0x02000000}, {0x04000000, 0x04000000}}), 0U);
    EXPECT_THAT(
        support::call_log::take(),
        testing::Contains(queried(2827, 2, get_request({{0x05000000, 0x02000000}, {0x04000000, 0x04000000}}), 179)));
}

TEST_F(port_config_get, goes_to_the_owner_of_a_channel_without_asking_for_members) {
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000000;
    for (const uint32_t kind : {0U, 1U, 3U}) EXPECT_EQ(get_answered(kind, 0x04001000), asked(kind, 0x04001000, 175));
    interfaces.map_member = 0x01000000;
    for (const uint32_t kind : {0U, 1U, 3U}) EXPECT_EQ(get_answered(kind, 0x04001000), asked(kind, 0x04001000, 43));
}

TEST_F(port_config_get, goes_to_the_port_manager_when_the_index_has_no_type) {
    interfaces.without_type = {0x04001000};
    EXPECT_EQ(get_answered(2, 0x04001000), asked(2, 0x04001000, 43));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

// Both kinds of port channel, by member.
class get_by_member : public port_config_get, public testing::WithParamInterface<if_index_t> {
  protected:
    get_by_member() : index(GetParam()) {}

    // What is left of the log when the request itself, to this service, is taken away from its end.
    calls before_request(uint32_t sap) {
        calls log = get_answered(2, index);
        const calls request = asked(2, index, sap);
        EXPECT_GE(log.size(), request.size());
        EXPECT_EQ(calls(log.end() - 4, log.end()), request);
        log.resize(log.size() - 4);
        return log;
    }

    // The owner when nothing else is known.
    [[nodiscard]] uint32_t own_sap(uint32_t sap) const { return index >> 24 == 22 ? 175 : sap; }

    const if_index_t index;
};

TEST_P(get_by_member, goes_to_the_owner_of_the_member_that_the_query_names) {
    const std::pair<if_index_t, uint32_t> owners[] = {{0x02000001, 45},  {0x01000001, 43},  {0x05000001, 179},
                                                      {0x14000001, 175}, {0x1a000001, 175}, {0xfe000001, 43}};
    for (const auto &[member, sap] : owners) {
        transport.will_answer_query(0, payload().be32(member).fill(524, 0xee));
        EXPECT_THAT(before_request(sap), ElementsAre(asked_member(index), "free(answer)"));
    }
}

TEST_P(get_by_member, takes_an_answer_of_4_bytes) {
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_THAT(before_request(45), ElementsAre(asked_member(index), "free(answer)"));
}

TEST_P(get_by_member, goes_to_175_when_the_query_fails) {
    for (const uint32_t result : {1U, 22U, 0xffffffffU}) {
        transport.will_answer_query(result, {});
        EXPECT_THAT(before_request(175), ElementsAre(asked_member(index)));
    }
}

TEST_P(get_by_member, frees_the_answer_of_a_failed_query_unread) {
    for (const uint32_t result : {1U, 22U, 0xffffffffU}) {
        transport.will_answer_query(result, payload().be32(0x02000001));
        EXPECT_THAT(before_request(175), ElementsAre(asked_member(index), "free(answer)"));
    }
}

TEST_P(get_by_member, goes_to_175_and_frees_an_answer_that_is_too_short) {
    for (uint32_t size = 0; size < 4; ++size) {
        transport.will_answer_query(0, bytes(size, 2));
        EXPECT_THAT(before_request(175), ElementsAre(asked_member(index), "free(answer)"));
    }
}

TEST_P(get_by_member, goes_to_its_own_owner_when_the_query_has_no_answer) {
    transport.will_answer_query(0, {});
    EXPECT_THAT(before_request(own_sap(43)), ElementsAre(asked_member(index)));
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000001;
    transport.will_answer_query(0, {});
    EXPECT_THAT(before_request(175), ElementsAre(asked_member(index)));
}

TEST_P(get_by_member, goes_to_the_port_manager_when_the_member_has_no_type) {
    interfaces.without_type = {0x02000001};
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_THAT(before_request(43), ElementsAre(asked_member(index), "free(answer)"));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

TEST_P(get_by_member, goes_to_175_without_a_query_for_a_sub_interface) {
    interfaces.channel_sub_interfaces = {index};
    EXPECT_THAT(before_request(175), IsEmpty());
}

TEST_P(get_by_member, puts_the_channel_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    transport.will_answer_query(0, payload().be32(0x02000001));
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(get(2, {{index, index}}), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(asked_member(~index)));
}

TEST_P(get_by_member, frees_the_members_answer_when_memory_runs_out) {
    transport.will_answer_query(0, payload().be32(0x02000001));
    heap.fail_allocation(1);
    EXPECT_EQ(get(2, {{index, index}}), 1U);
    EXPECT_EQ(heap.live_blocks(), 0);
    output.take();
}

INSTANTIATE_TEST_SUITE_P(types, get_by_member, testing::Values(0x04001000U, 0x16001000U),
                         [](const auto &each) { return "type_" + std::to_string(each.param >> 24); });

TEST_F(port_config_get, by_member_asks_about_index_0_when_the_index_is_the_special_one) {
    interfaces.special_types[0x84ffffff] = 4;
    transport.will_answer_query(0, payload().be32(0x02000001));
    EXPECT_EQ(get_answered(2, 0x84ffffff),
              (calls{asked_member(0), "free(answer)", "malloc(23)",
                     queried(2827, 2, get_request({{0x84ffffff, 0x85000000}}), 45), "free(23)", "free(answer)"}));
}

// ---- blocks

TEST_F(port_config_get, without_memory_for_its_request_sends_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(get(1, {one_range, one_range}), 1U);
    EXPECT_THAT(output.take(),
                MatchesRegex(cmi_report_start + std::string("31\npm_cmi_get_port_config: malloc failure, "
                                                            "size\\(31\\)\n")));
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(31) fails"));
    expect_no_records();
}

TEST_F(port_config_get, that_does_not_fit_in_32_bits_is_a_failed_allocation) {
    for (const uint32_t count : {0x1fffffffU, 0x20000000U, 0x3fffffffU, 0xffffffffU}) {
        out = {};
        EXPECT_EQ(pm_cmi_get_port_config(handle, 1, count, &one_range, &out.count, &out.records, 1), 1U);
        const std::string size = std::to_string(static_cast<int32_t>(15 + 8 * count));
        EXPECT_THAT(output.take(), MatchesRegex(cmi_report_start + size + "\npm_cmi_get_port_config: malloc failure, " +
                                                "size\\(" + size + "\\)\n"));
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), IsEmpty());
        expect_no_records();
    }
}

TEST_F(port_config_get, that_just_fits_in_32_bits_is_allocated) {
    heap.fail_allocation(1);
    EXPECT_EQ(pm_cmi_get_port_config(handle, 1, 0x1ffffffe, &one_range, &out.count, &out.records, 1), 1U);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()), ElementsAre("malloc(4294967295) fails"));
    output.take();
}

TEST_F(port_config_get, without_memory_for_its_records_frees_everything_and_keeps_their_count) {
    heap.fail_allocation(2);
    transport.will_answer_query(0, answer(0, 1).append(base_record_of(0x01020304)));
    EXPECT_EQ(get(1, {one_range}), 1U);
    EXPECT_THAT(output.take(), MatchesRegex(report_start + std::string("388\n")));
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(out.records, nullptr);
}

// ---- answers

TEST_F(port_config_get, has_a_record_for_each_port_in_one_block) {
    transport.will_answer_query(0, answer(0, 2).append(base_record_of(0x01020304)).append(base_record_of(0x01020305)));
    EXPECT_EQ(get(1, {one_range}), 0U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(bytes_of(out.records[0]), expected_record(base_record_of(0x01020304)));
    EXPECT_EQ(bytes_of(out.records[1]), expected_record(base_record_of(0x01020305)));
    EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(23)", queried(2827, 1, get_request({one_range}), 43), "free(23)", "malloc(776)",
                            "free(answer)"));
}

TEST_F(port_config_get, has_a_null_array_when_there_are_no_records) {
    get_answered(1, 0x01000000);
    expect_no_records();
}

TEST_F(port_config_get, returns_the_services_status_without_records) {
    for (const uint32_t status : {1U, 5U, PM_ERR_REJECTED, 0xffffffffU}) {
        transport.will_answer_query(0, answer(status, 1).append(base_record_of(0x01020304)));
        EXPECT_EQ(get(1, {one_range}), status);
        expect_no_records();
        transport.will_answer_query(0, payload().be32(status));
        EXPECT_EQ(get(1, {one_range}), status);
        expect_no_records();
    }
}

TEST_F(port_config_get, refuses_an_empty_or_malformed_answer) {
    const std::optional<bytes> answers[] = {std::nullopt,
                                            bytes{},
                                            bytes(3, 1),
                                            bytes(4, 0),
                                            bytes(7, 0),
                                            answer(0, 1).fill(188, 0),
                                            answer(0, 2).fill(377, 0),
                                            answer(0, 0x80000000).fill(400, 0)};
    for (const auto &content : answers) {
        transport.will_answer_query(0, content);
        EXPECT_EQ(get(1, {one_range}), PM_ERR_INVALID_PARAM);
        expect_no_records();
        EXPECT_EQ(heap.live_blocks(), 0);
    }
}

TEST_F(port_config_get, reads_the_answer_as_far_as_the_length_that_came_back) {
    transport.will_answer_query(0, answer(0, 1).append(base_record_of(0x01020304)), 196);
    EXPECT_EQ(get(1, {one_range}), PM_ERR_INVALID_PARAM);
    expect_no_records();
}

TEST_F(port_config_get, returns_the_status_of_a_failed_exchange) {
    for (const uint32_t status : {1U, 110U, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(get(1, {one_range}), status);
        expect_no_records();
    }
}

TEST_F(port_config_get, frees_the_answer_of_a_failed_exchange_unread) {
    transport.will_answer_query(113, answer(0, 1).append(base_record_of(0x01020304)));
    EXPECT_EQ(get(1, {one_range}), 113U);
    expect_no_records();
    EXPECT_EQ(heap.live_blocks(), 0);
}

}  // namespace
