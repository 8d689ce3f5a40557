// SPDX-License-Identifier: Apache-2.0
// The two requests for transceivers: which service is asked, the request, and what becomes of the answer.
#include <limits>

#include "port_config_fixture.h"
#include "transceiver_record.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::answer;
using unit::blocks_and_exchanges;
using unit::handle;
using unit::queried;
using unit::transceiver_on_wire;
using unit::transceiver_report_start;

using ranges = std::vector<pm_if_index_range_t>;

const ranges one_range{{0x01020304, 0x05060708}};
struct request_case {
    const char *name;
    decltype(pm_cmi_get_fcot_info) *get;
    uint32_t flavour;
    bool with_diagnostics;
};

void PrintTo(const request_case &request, std::ostream *to) { *to << request.name; }

class transceiver_info_request : public unit::parse_test<pm_fcot_info_t>,
                                 public testing::WithParamInterface<request_case> {
  protected:
    uint32_t get(const ranges &about) {
        out.release();
        return GetParam().get(handle, 6, static_cast<int32_t>(about.size()), about.data(), &out.count, &out.records,
                              unit::wait);
    }

    uint32_t get_answered(const ranges &about) {
        transport.will_answer_query(0, answer(0, 0));
        return get(about);
    }

    static payload request(const ranges &about) {
        payload all = payload().be32(static_cast<uint32_t>(about.size())).be32(GetParam().flavour);
        for (const auto &range : about) all.be32(range.first).be32(range.last);
        return all;
    }

    static std::string asked(const ranges &about, uint32_t sap = 43) { return queried(2832, 6, request(about), sap); }

    // The status of an answer without records is told by the plain request's exchange or by the answer itself.
    static uint32_t plain_or_answered(uint32_t plain, uint32_t answered) {
        return GetParam().with_diagnostics ? answered : plain;
    }

    void expect_no_records() {
        EXPECT_EQ(out.count, 0U);
        EXPECT_EQ(out.records, nullptr);
        EXPECT_EQ(heap.live_blocks(), 0);
    }
};

TEST_P(transceiver_info_request, sends_count_flavour_and_ranges_and_frees_what_it_allocated) {
    EXPECT_EQ(get_answered(one_range), 0U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(16)", "hton_if_index(0x01020304)",
                                                       "hton_if_index(0x05060708)", "if_index_get_type(0x01020304)",
                                                       asked(one_range), "free(16)", "malloc(0)", "free(answer)"));
}

TEST_P(transceiver_info_request, sends_every_range_in_order) {
    const ranges about{{0x01000001, 0x01000002}, {0x02000003, 0x02000004}, {0x04000005, 0x04000006}};
    EXPECT_EQ(get_answered(about), 0U);
    EXPECT_THAT(support::call_log::take(), testing::IsSupersetOf({std::string("malloc(32)"), asked(about)}));
}

TEST_P(transceiver_info_request, sends_a_thousand_ranges) {
    const ranges about(1000, {0x01020304, 0x05060708});
    EXPECT_EQ(get_answered(about), 0U);
    EXPECT_THAT(support::call_log::take(), testing::IsSupersetOf({std::string("malloc(8008)"), asked(about)}));
}

TEST_P(transceiver_info_request, puts_interface_indexes_on_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(get_answered(one_range), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(asked({{0xfefdfcfb, 0xfaf9f8f7}})));
}

TEST_P(transceiver_info_request, goes_to_the_owner_of_the_first_index_of_the_first_range) {
    for (uint32_t type = 0; type < 256; ++type) {
        uint32_t sap = 43;
        if (type == 2) sap = 45;
        if (type == 5) sap = 179;
        if (type == 20 || type == 26) sap = 175;
        const ranges about{{type << 24 | 0x123456, 0x02000009}, {0x05000000, 0x02000000}};
        EXPECT_EQ(get_answered(about), 0U);
        EXPECT_THAT(support::call_log::take(), testing::Contains(asked(about, sap))) << type;
    }
}

TEST_P(transceiver_info_request, of_a_channel_goes_to_the_owner_of_the_channel) {
    interfaces.map_count = 1;
    interfaces.map_member = 0x02000000;
    const ranges about{{0x04001000, 0x04001000}};
    EXPECT_EQ(get_answered(about), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(asked(about, 175)));
}

TEST_P(transceiver_info_request, of_an_index_without_type_goes_to_the_port_manager) {
    interfaces.without_type = {0x02000000};
    const ranges about{{0x02000000, 0x02000001}};
    EXPECT_EQ(get_answered(about), 0U);
    EXPECT_THAT(support::call_log::take(), testing::Contains(asked(about)));
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
}

TEST_P(transceiver_info_request, passes_handle_kind_and_last_argument_on) {
    transport.will_answer_query(0, answer(0, 0));
    EXPECT_EQ(GetParam().get(0xfffffffd, 0xfffffffc, 1, one_range.data(), &out.count, &out.records, 0xfffffffe), 0U);
    EXPECT_THAT(support::call_log::take(),
                testing::Contains("cmi_req_resp(2832, 4294967292, <" + support::hex(request(one_range)) +
                                  ">, 16, 0, 0, 43, 0xfffffffd, 4294967294)"));
}

TEST_P(transceiver_info_request, has_a_record_for_each_transceiver_in_one_block) {
    const bytes first = transceiver_on_wire(0x01020304, 0);
    const bytes second = transceiver_on_wire(0x01020305, 1);
    transport.will_answer_query(0, answer(0, 2).append(first).append(second));
    EXPECT_EQ(get(one_range), 0U);
    ASSERT_EQ(out.count, 2U);
    EXPECT_EQ(unit::bytes_of(out.records[0]), unit::transceiver_in_memory(first));
    EXPECT_EQ(unit::bytes_of(out.records[1]), unit::transceiver_in_memory(second));
    EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(16)", asked(one_range), "free(16)", "malloc(534)", "free(answer)"));
}

TEST_P(transceiver_info_request, without_transceivers_has_what_the_allocator_gives_for_nothing) {
    EXPECT_EQ(get_answered(one_range), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_TRUE(heap.is_live(out.records));
}

TEST_P(transceiver_info_request, may_be_answered_with_more_bytes_than_records) {
    transport.will_answer_query(0, answer(0, 1).append(transceiver_on_wire(0x01020304, 0)).fill(300, 0xee));
    EXPECT_EQ(get(one_range), 0U);
    EXPECT_EQ(out.count, 1U);
}

TEST_P(transceiver_info_request, needs_ranges) {
    const int32_t none[] = {0, -1, std::numeric_limits<int32_t>::min()};
    for (const int32_t count : none) {
        EXPECT_EQ(GetParam().get(handle, 6, count, one_range.data(), &out.count, &out.records, 0), PM_ERR_FAILURE);
    }
    EXPECT_EQ(GetParam().get(handle, 6, 1, nullptr, &out.count, &out.records, 0), PM_ERR_FAILURE);
    EXPECT_TRUE(out.untouched_both());
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_P(transceiver_info_request, needs_outputs) {
    EXPECT_EQ(GetParam().get(handle, 6, 1, one_range.data(), nullptr, &out.records, 0), PM_ERR_FAILURE);
    EXPECT_EQ(GetParam().get(handle, 6, 1, one_range.data(), &out.count, nullptr, 0), PM_ERR_FAILURE);
    EXPECT_TRUE(out.untouched_both());
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

// ---- memory

TEST_P(transceiver_info_request, without_memory_sends_nothing) {
    heap.fail_allocation(1);
    EXPECT_EQ(get(one_range), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(16) fails"));
    EXPECT_THAT(output.take(),
                MatchesRegex(transceiver_report_start + "16\n" + GetParam().name + ": malloc failure, size\\(16\\)\n"));
    expect_no_records();
}

// The size is told cut to 32 bits.
TEST_P(transceiver_info_request, that_does_not_fit_in_32_bits_is_a_failed_allocation) {
    const std::pair<int32_t, const char *> sizes[] = {
        {0x1fffffff, "0"}, {0x20000000, "8"}, {0x20000001, "16"}, {0x7fffffff, "0"}};
    for (const auto &[count, size] : sizes) {
        EXPECT_EQ(GetParam().get(handle, 6, count, one_range.data(), &out.count, &out.records, 0), 1U);
        EXPECT_THAT(support::call_log::take(), IsEmpty());
        EXPECT_THAT(output.take(), MatchesRegex(transceiver_report_start + size + "\n" + GetParam().name +
                                                ": malloc failure, size\\(" + size + "\\)\n"));
        expect_no_records();
    }
}

TEST_P(transceiver_info_request, of_the_most_ranges_that_fit_allocates_all_of_them) {
    heap.fail_allocation(1);
    EXPECT_EQ(GetParam().get(handle, 6, 0x1ffffffe, one_range.data(), &out.count, &out.records, 0), 1U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(4294967288) fails"));
    EXPECT_THAT(output.take(), testing::EndsWith(GetParam().name + std::string(": malloc failure, size(-8)\n")));
}

TEST_P(transceiver_info_request, without_memory_for_its_records_frees_the_answer) {
    heap.fail_allocation(2);
    transport.will_answer_query(0, answer(0, 1).append(transceiver_on_wire(0x01020304, 0)));
    EXPECT_EQ(get(one_range), plain_or_answered(1, 0));
    EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                ElementsAre("malloc(16)", asked(one_range), "free(16)", "malloc(267) fails", "free(answer)"));
    EXPECT_THAT(output.take(), MatchesRegex(transceiver_report_start + "267\n"));
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(out.records, nullptr);
}

// ---- answers without records

TEST_P(transceiver_info_request, returns_the_services_status) {
    for (const uint32_t status : {1U, 5U, PM_ERR_INVALID_RANGE, 0xffffffffU}) {
        transport.will_answer_query(0, answer(status, 1).append(transceiver_on_wire(0x01020304, 0)));
        EXPECT_EQ(get(one_range), status);
        expect_no_records();
        transport.will_answer_query(0, payload().be32(status));
        EXPECT_EQ(get(one_range), status);
        expect_no_records();
    }
}

TEST_P(transceiver_info_request, without_answer_returns_the_status_of_the_exchange) {
    for (const uint32_t status : {1U, 113U, 0x40290009U, 0xffffffffU}) {
        transport.will_answer_query(status, {});
        EXPECT_EQ(get(one_range), status);
        expect_no_records();
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                    ElementsAre("malloc(16)", asked(one_range), "free(16)"));
    }
}

TEST_P(transceiver_info_request, without_answer_after_a_good_exchange_is_refused_by_the_parser) {
    transport.will_answer_query(0, {});
    EXPECT_EQ(get(one_range), PM_ERR_INVALID_PARAM);
    expect_no_records();
}

TEST_P(transceiver_info_request, answered_in_a_failed_exchange_has_no_records) {
    for (const uint32_t answered : {0U, 5U}) {
        transport.will_answer_query(113, answer(answered, 1).append(transceiver_on_wire(0x01020304, 0)));
        EXPECT_EQ(get(one_range), plain_or_answered(113, answered));
        expect_no_records();
        EXPECT_THAT(blocks_and_exchanges(support::call_log::take()),
                    ElementsAre("malloc(16)", asked(one_range), "free(16)", "free(answer)"));
    }
}

TEST_P(transceiver_info_request, answered_with_less_than_a_status_is_malformed) {
    for (size_t size = 0; size < 4; ++size) {
        transport.will_answer_query(0, bytes(size, 1));
        EXPECT_EQ(get(one_range), PM_ERR_INVALID_PARAM) << size;
        expect_no_records();
        transport.will_answer_query(113, bytes(size, 1));
        EXPECT_EQ(get(one_range), 113U) << size;
        expect_no_records();
    }
}

TEST_P(transceiver_info_request, answered_with_less_than_its_records_has_none) {
    const bytes good = answer(0, 1).append(transceiver_on_wire(0x01020304, 0));
    for (size_t size = 4; size < good.size(); ++size) {
        transport.will_answer_query(0, unit::cut(good, size));
        EXPECT_EQ(get(one_range), plain_or_answered(PM_ERR_INVALID_PARAM, 0)) << size;
        expect_no_records();
    }
}

TEST_P(transceiver_info_request, believes_the_transport_about_the_length) {
    transport.will_answer_query(0, answer(0, 1).append(transceiver_on_wire(0x01020304, 0)), 274);
    EXPECT_EQ(get(one_range), plain_or_answered(PM_ERR_INVALID_PARAM, 0));
    expect_no_records();
}

// The size of the second one looks small when it is cut to 32 bits.
TEST_P(transceiver_info_request, answered_with_a_count_that_cannot_be_has_no_records) {
    for (const uint32_t count : {7U, 16086026U, 0x10000000U, 0x80000000U, 0xffffffffU}) {
        transport.will_answer_query(0, answer(0, count).fill(1700, 0));
        EXPECT_EQ(get(one_range), plain_or_answered(PM_ERR_INVALID_PARAM, 0)) << count;
        expect_no_records();
    }
}

INSTANTIATE_TEST_SUITE_P(flavours, transceiver_info_request,
                         testing::Values(request_case{"pm_cmi_get_fcot_info", pm_cmi_get_fcot_info, 1, false},
                                         request_case{"pm_get_next_port_fcot_info_with_ddm",
                                                      pm_get_next_port_fcot_info_with_ddm, 2, true}),
                         [](const auto &each) { return std::string(each.param.name); });

}  // namespace
