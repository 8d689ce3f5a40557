// SPDX-License-Identifier: Apache-2.0
// Answers with transceivers, bare and in messages.
#include "guarded_bytes.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"
#include "transceiver_record.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using unit::answer;
using unit::transceiver_in_memory;
using unit::transceiver_on_wire;
using unit::transceiver_report_start;

class transceiver_info_response : public unit::parse_test<pm_fcot_info_t> {
  protected:
    uint32_t parse(const bytes &content) {
        out.release();
        const support::guarded_bytes wire(content);
        return pm_parse_cmi_get_fcot_info_res_payload(wire.data(), &out.count, &out.records);
    }

    void expect_records(const std::vector<bytes> &wire) {
        ASSERT_EQ(out.count, wire.size());
        for (size_t i = 0; i < wire.size(); ++i) {
            EXPECT_EQ(unit::bytes_of(out.records[i]), transceiver_in_memory(wire[i])) << i;
        }
    }
};

TEST_F(transceiver_info_response, has_the_words_of_its_layout_converted_and_the_rest_as_it_came) {
    for (uint32_t layout = 0; layout < 256; ++layout) {
        const bytes wire = transceiver_on_wire(0x01020304, static_cast<uint8_t>(layout));
        EXPECT_EQ(parse(answer(0, 1).append(wire)), 0U);
        expect_records({wire});
    }
}

TEST_F(transceiver_info_response, of_layout_1_has_its_first_pair_of_words_in_host_order) {
    const payload zeros = payload().fill(109, 0);
    EXPECT_EQ(parse(answer(0, 1)
                        .be32(0x01020304)
                        .be32(0x05060708)
                        .fill(128, 0x11)
                        .u8(0x12)
                        .be32(0x21222324)
                        .be32(0x31323334)
                        .append(zeros)
                        .be32(0x41424344)
                        .be32(0x51525354)
                        .fill(4, 0x13)
                        .u8(1)),
              0U);
    const pm_fcot_info_t &record = out.records[0];
    EXPECT_EQ(record.if_index, 0x01020304U);
    EXPECT_EQ(record.attributes, 0x05060708U);
    EXPECT_EQ(record.serial_id[127], 0x11);
    EXPECT_EQ(record.flags, 0x12);
    EXPECT_EQ(record.value_a[0], 0x21222324U);
    EXPECT_EQ(record.value_a[1], 0x31323334U);
    EXPECT_EQ(record.value_b[0], 0x44434241U);
    EXPECT_EQ(record.value_b[1], 0x54535251U);
    EXPECT_EQ(record.layout, 1);
}

TEST_F(transceiver_info_response, has_its_records_in_order_in_one_block) {
    const std::vector<bytes> wire{transceiver_on_wire(0x01020304, 1), transceiver_on_wire(0x01020305, 0),
                                  transceiver_on_wire(0x01020306, 1)};
    payload content = answer(0, 3);
    for (const auto &record : wire) content.append(record);
    EXPECT_EQ(parse(content), 0U);
    expect_records(wire);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(801)", "ntoh_if_index() = 0x01020304",
                                                       "ntoh_if_index() = 0x01020305", "ntoh_if_index() = 0x01020306"));
}

TEST_F(transceiver_info_response, has_interface_indexes_from_the_wire_as_the_platform_does) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(parse(answer(0, 1).append(transceiver_on_wire(0x01020304, 0))), 0U);
    EXPECT_EQ(out.records[0].if_index, 0xfefdfcfbU);
    EXPECT_EQ(out.records[0].attributes, 0x1f262d34U);
}

TEST_F(transceiver_info_response, without_records_has_what_the_allocator_gives_for_nothing) {
    EXPECT_EQ(parse(answer(0, 0)), 0U);
    EXPECT_EQ(out.count, 0U);
    EXPECT_TRUE(heap.is_live(out.records));
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(0)"));
}

TEST_F(transceiver_info_response, with_a_status_returns_it_alone) {
    for (const uint32_t status : {1U, 0x100U, 0x10000U, 0x40290009U, 0xffffffffU}) {
        EXPECT_EQ(parse(payload().be32(status)), status);
        EXPECT_TRUE(out.untouched_both());
    }
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(transceiver_info_response, that_is_null_is_refused) {
    EXPECT_EQ(pm_parse_cmi_get_fcot_info_res_payload(nullptr, &out.count, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(transceiver_info_response, needs_outputs) {
    const support::guarded_bytes wire(answer(0, 0));
    EXPECT_EQ(pm_parse_cmi_get_fcot_info_res_payload(wire.data(), nullptr, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(pm_parse_cmi_get_fcot_info_res_payload(wire.data(), &out.count, nullptr), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(transceiver_info_response, without_memory_keeps_its_count) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse(answer(0, 2).fill(534, 1)), 1U);
    EXPECT_EQ(out.count, 2U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(support::call_log::take(), ElementsAre("malloc(534) fails"));
    EXPECT_THAT(output.take(), MatchesRegex(transceiver_report_start + "534\n"));
}

TEST_F(transceiver_info_response, whose_records_do_not_fit_in_memory_is_a_failed_allocation) {
    for (const uint32_t count : {16086026U, 0x10000000U, 0x20000001U, 0xffffffffU}) {
        heap.fail_allocation(1);
        EXPECT_EQ(parse(answer(0, count)), 1U) << count;
        EXPECT_EQ(out.count, count);
        EXPECT_EQ(out.records, nullptr);
        const std::string size = std::to_string(static_cast<int32_t>(count * 267));
        EXPECT_THAT(output.take(), MatchesRegex(transceiver_report_start + size + "\n"));
        // Where addresses have 32 bits, the allocator need not be asked.
        const std::string asked = "malloc(" + std::to_string(uint64_t{count} * 267) + ") fails";
        EXPECT_THAT(support::call_log::take(),
                    sizeof(size_t) == 4 ? testing::Matcher<std::vector<std::string>>(IsEmpty()) : ElementsAre(asked));
    }
}

// ---- pm_parse_fcot_info

constexpr size_t front_size = 112;

class transceiver_info_message : public transceiver_info_response {
  protected:
    uint32_t parse_message(const std::optional<bytes> &content, bool is_response = true) {
        out.release();
        const mts_msg_t message = transport.message(0x1234, content, is_response);
        const uint32_t status = pm_parse_fcot_info(&message, &out.count, &out.records);
        transport.drop(message);
        return status;
    }

    static payload behind_front(const bytes &response) { return payload().fill(front_size, 0xee).append(response); }

    const bytes record = transceiver_on_wire(0x01020304, 1);
    const bytes good = behind_front(answer(0, 1).append(record));
};

TEST_F(transceiver_info_message, has_its_answer_behind_112_bytes) {
    EXPECT_EQ(parse_message(good), 0U);
    expect_records({record});
    const auto calls = support::call_log::take();
    EXPECT_THAT(calls,
                testing::UnorderedElementsAre("mts_payload_get(message 0x7001)", "mts_payload_size(message 0x7001)",
                                              "malloc(267)", "ntoh_if_index() = 0x01020304"));
}

TEST_F(transceiver_info_message, need_not_be_a_response) {
    EXPECT_EQ(parse_message(good, false), 0U);
    expect_records({record});
}

TEST_F(transceiver_info_message, may_be_longer_than_its_records) {
    EXPECT_EQ(parse_message(payload().append(good).fill(5, 0xdd)), 0U);
    expect_records({record});
}

TEST_F(transceiver_info_message, without_payload_is_3) {
    EXPECT_EQ(parse_message({}), 3U);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(transceiver_info_message, that_is_null_is_3) {
    EXPECT_EQ(pm_parse_fcot_info(nullptr, &out.count, &out.records), 3U);
    EXPECT_TRUE(out.untouched_both());
    EXPECT_THAT(support::call_log::take(), IsEmpty());
}

TEST_F(transceiver_info_message, needs_outputs) {
    const mts_msg_t message = transport.message(0x1234, good);
    EXPECT_EQ(pm_parse_fcot_info(&message, nullptr, &out.records), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(pm_parse_fcot_info(&message, &out.count, nullptr), PM_ERR_INVALID_PARAM);
    EXPECT_TRUE(out.untouched_both());
    transport.drop(message);
}

TEST_F(transceiver_info_message, cut_short_anywhere_is_malformed) {
    for (size_t size = 0; size < good.size(); ++size) {
        ASSERT_EQ(parse_message(unit::cut(good, size)), PM_ERR_INVALID_PARAM) << size;
        ASSERT_TRUE(out.untouched_both()) << size;
    }
    EXPECT_EQ(unit::allocations(), 0);
}

TEST_F(transceiver_info_message, with_a_status_returns_it_alone) {
    EXPECT_EQ(parse_message(behind_front(payload().be32(PM_ERR_REJECTED))), PM_ERR_REJECTED);
    EXPECT_EQ(parse_message(behind_front(answer(5, 0xffffffff))), 5U);
    EXPECT_TRUE(out.untouched_both());
}

TEST_F(transceiver_info_message, with_a_count_that_cannot_be_is_malformed) {
    for (const uint32_t count : {7U, 16086026U, 0x10000000U, 0xffffffffU}) {
        EXPECT_EQ(parse_message(behind_front(answer(0, count).fill(1700, 0))), PM_ERR_INVALID_PARAM) << count;
        EXPECT_TRUE(out.untouched_both());
    }
}

TEST_F(transceiver_info_message, without_memory_keeps_its_count) {
    heap.fail_allocation(1);
    EXPECT_EQ(parse_message(good), 1U);
    EXPECT_EQ(out.count, 1U);
    EXPECT_EQ(out.records, nullptr);
    EXPECT_THAT(output.take(), MatchesRegex(transceiver_report_start + "267\n"));
}

}  // namespace
