// SPDX-License-Identifier: Apache-2.0
// Asking line cards for the readings of transceivers.
#include <fmt/format.h>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "request_calls.h"
#include "sfp_diagnostics_answer.h"

namespace {

using support::bytes;
using testing::ElementsAre;
using unit::asked_error;
using unit::asked_token;
using unit::dropped;
using unit::handle;
using unit::received;
using unit::sfp_answer;
using unit::sfp_header;
using unit::sfp_readings;
using unit::sfp_status_alone;
using unit::sfp_words;
using unit::words_of;

constexpr if_index_t port = 0x01040203;
constexpr const char *as_reported = "sfp_diagnostics.cc: pm_parse_get_sfp_info";
const std::string slot_told = "if_index_get_slot(0x01040203)";
const std::string answer_dropped = "mts_drop(0x55667788, message 0x7002)";

std::string sent_to(uint32_t node, if_index_t if_index = port) {
    return fmt::format("mts_send(0x55667788, {:#x}, 181, 425, <{:08x}>, 4, 0, 0)", node, if_index);
}

class sfp_diagnostics_query : public support::library_test {
  protected:
    uint32_t get() { return pm_get_sfp_diag_info(handle, port, &out.info, &out.extra); }

    uint32_t get_answered(const std::optional<bytes> &answer) {
        transport.will_send();
        transport.will_receive_answer(answer);
        transport.will_drop();
        transport.will_drop();
        return get();
    }

    // The steps of an exchange whose drops end like this, with these errors.
    uint32_t get_answered(const bytes &answer, int32_t first_drop, int32_t second_drop) {
        transport.will_send();
        transport.will_receive_answer(answer);
        transport.will_drop(first_drop, 9);
        transport.will_drop(second_drop, 11);
        return get();
    }

    unit::sfp_outputs out;
};

const bytes answer_without_note = sfp_answer().u8(0);

TEST_F(sfp_diagnostics_query, asks_the_line_card_and_drops_request_and_answer) {
    EXPECT_EQ(get_answered(answer_without_note), 0U);
    EXPECT_EQ(words_of(out.info), sfp_readings(0));
    EXPECT_TRUE(out.is_extra_untouched());
    const auto log = support::call_log::take();
    ASSERT_EQ(log.size(), 9U);
    EXPECT_THAT(unit::calls(log.begin(), log.begin() + 4),
                ElementsAre(slot_told, sent_to(0x502), asked_token, received));
    EXPECT_THAT(unit::calls(log.begin() + 4, log.begin() + 6),
                testing::UnorderedElementsAre("mts_payload_get(message 0x7002)", "mts_payload_size(message 0x7002)"));
    EXPECT_THAT(log[6], testing::StartsWith("tlv_aligned_array_get_num_tlvs("));
    EXPECT_THAT(unit::calls(log.begin() + 7, log.end()), ElementsAre(dropped, answer_dropped));
}

TEST_F(sfp_diagnostics_query, has_what_the_line_card_adds) {
    elements.add(80, support::payload().be32(1).be32(2).be32(3).be32(4));
    EXPECT_EQ(get_answered(answer_without_note), 0U);
    EXPECT_EQ(out.extra.alarms, 1U);
    EXPECT_EQ(out.extra.age, 0x300000004U);
}

TEST_F(sfp_diagnostics_query, says_so_when_the_line_card_adds_nothing) {
    EXPECT_EQ(get_answered(sfp_answer()), 0U);
    EXPECT_EQ(output.take(), "pm_parse_get_sfp_info: tlv_array NULL!\n");
}

TEST_F(sfp_diagnostics_query, goes_to_the_node_of_the_slot) {
    for (uint32_t slot = 0; slot < 256; ++slot) {
        transport.will_send(-1, 113);
        const if_index_t if_index = 0x02000102 | slot << 16;
        EXPECT_EQ(pm_get_sfp_diag_info(handle, if_index, &out.info, &out.extra), 113U);
        const uint32_t node = slot == 255 ? 2 : 0x102 + 0x100 * slot;
        EXPECT_EQ(support::call_log::take().at(1), sent_to(node, if_index)) << slot;
    }
    output.take();
}

TEST_F(sfp_diagnostics_query, of_an_index_without_slot_goes_to_slot_0) {
    numbers.without_slot = {port};
    transport.will_send(-1, 113);
    EXPECT_EQ(get(), 113U);
    EXPECT_EQ(support::call_log::take().at(1), sent_to(0x102));
    output.take();
}

TEST_F(sfp_diagnostics_query, puts_the_interface_index_on_the_wire_byte_by_byte) {
    interfaces.wire_mask = 0xffffffff;
    EXPECT_EQ(get_answered(answer_without_note), 0U);
    EXPECT_EQ(support::call_log::take().at(1), sent_to(0x502));
}

TEST_F(sfp_diagnostics_query, takes_any_handle_to_the_transport) {
    transport.will_send(-1, 9);
    EXPECT_EQ(pm_get_sfp_diag_info(0, port, &out.info, &out.extra), 9U);
    EXPECT_EQ(support::call_log::take().at(1), "mts_send(0x0, 0x502, 181, 425, <01040203>, 4, 0, 0)");
    EXPECT_EQ(output.take(), "error sending request\n");
}

TEST_F(sfp_diagnostics_query, returns_the_line_cards_status) {
    EXPECT_EQ(get_answered(sfp_answer(5)), 5U);
    EXPECT_EQ(words_of(out.info), sfp_status_alone(5));
    EXPECT_TRUE(out.is_extra_untouched());
}

// ---- answers that are none

TEST_F(sfp_diagnostics_query, answered_with_another_element_is_malformed) {
    EXPECT_EQ(get_answered(sfp_header(26).fill(172, 1)), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(output.take(), "Returning from 1\n");
    EXPECT_EQ(words_of(out.info), sfp_words{});
}

TEST_F(sfp_diagnostics_query, answered_with_another_length_is_malformed) {
    EXPECT_EQ(get_answered(sfp_header(27, 176).fill(176, 1)), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(output.take(), "Returning from mts_get_sfp_diag_info_t = 172,PM_NTOHS(p_tlv->length) = 176\n");
    EXPECT_EQ(words_of(out.info), sfp_words{});
}

TEST_F(sfp_diagnostics_query, answered_without_payload_reports_it) {
    EXPECT_EQ(get_answered({}), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
    EXPECT_EQ(words_of(out.info), sfp_words{});
}

TEST_F(sfp_diagnostics_query, needs_a_record) {
    transport.will_send();
    transport.will_receive_answer(sfp_answer());
    transport.will_drop();
    transport.will_drop();
    EXPECT_EQ(pm_get_sfp_diag_info(handle, port, nullptr, &out.extra), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
}

// ---- failures of the transport

TEST_F(sfp_diagnostics_query, returns_the_error_of_a_failed_send) {
    transport.will_send(-1, 113);
    EXPECT_EQ(get(), 113U);
    EXPECT_THAT(support::call_log::take(), ElementsAre(slot_told, sent_to(0x502), asked_error));
    EXPECT_EQ(output.take(), "error sending request\n");
    EXPECT_EQ(words_of(out.info), out.rubbish);
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_a_failed_receive_and_drops_its_request) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop();
    EXPECT_EQ(get(), 110U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre(slot_told, sent_to(0x502), asked_token, received, asked_error, dropped));
    EXPECT_EQ(output.take(), "error recving response\n");
    EXPECT_EQ(words_of(out.info), out.rubbish);
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_the_receive_when_the_drop_fails_too) {
    transport.will_send();
    transport.will_receive(-1, 110);
    transport.will_drop(-1, 9);
    EXPECT_EQ(get(), 110U);
    EXPECT_EQ(output.take(), "error recving response\n");
}

TEST_F(sfp_diagnostics_query, takes_any_result_of_an_exchange_but_minus_1_for_a_success) {
    transport.will_send(1);
    transport.will_receive(7);
    transport.will_drop();
    transport.will_drop();
    EXPECT_EQ(get(), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported));
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_a_failed_drop_of_its_request) {
    EXPECT_EQ(get_answered(answer_without_note, -1, 0), 9U);
    EXPECT_EQ(output.take(), "error dropping request\n");
    EXPECT_EQ(words_of(out.info), sfp_readings(0));
    EXPECT_THAT(support::call_log::take(), testing::IsSupersetOf({dropped, asked_error, answer_dropped}));
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_a_failed_drop_of_its_answer) {
    EXPECT_EQ(get_answered(answer_without_note, 0, -1), 11U);
    EXPECT_EQ(output.take(), "error dropping response\n");
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_the_latter_drop_when_both_fail) {
    EXPECT_EQ(get_answered(answer_without_note, -1, -1), 11U);
    EXPECT_EQ(output.take(), "error dropping request\nerror dropping response\n");
    const auto log = support::call_log::take();
    EXPECT_THAT(unit::calls(log.end() - 4, log.end()), ElementsAre(dropped, asked_error, answer_dropped, asked_error));
}

TEST_F(sfp_diagnostics_query, returns_the_error_of_a_failed_drop_whatever_the_answer) {
    EXPECT_EQ(get_answered(sfp_header(26).fill(172, 1), -1, 0), 9U);
    EXPECT_EQ(output.take(), "Returning from 1\nerror dropping request\n");
    EXPECT_EQ(get_answered(sfp_answer(5), 0, -1), 11U);
    EXPECT_EQ(output.take(), "error dropping response\n");
    EXPECT_EQ(words_of(out.info), sfp_status_alone(5));
}

TEST_F(sfp_diagnostics_query, takes_any_result_of_a_drop_but_minus_1_for_a_success) {
    EXPECT_EQ(get_answered(sfp_answer(5), 1, 2), 5U);
}

}  // namespace
