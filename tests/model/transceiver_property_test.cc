// SPDX-License-Identifier: Apache-2.0
// Answers about transceivers, in both layouts of their records.
#include "answer_property.h"
#include "naive_transceiver.h"

namespace {

using model::answer;
using model::cmi_result;
using model::random_source;
using support::bytes;

constexpr size_t record_size = 267;
constexpr size_t layout_offset = 266;
constexpr size_t message_header = 112;
constexpr uint32_t fcot_opcode = 2832;

const pm_if_index_range_t range{0x01020300, 0x01020400};

// Records, every other one in the first layout.
bytes random_transceivers(random_source &source) {
    bytes payload = model::random_records(source, record_size);
    for (size_t at = 8 + layout_offset; at < payload.size(); at += record_size) {
        if (source.one_in(2)) payload[at] = 1;
    }
    return payload;
}

class transceiver_answer : public model::answer_property {
  protected:
    void expect_message(const bytes &answer) {
        bytes payload(message_header, 0x11);
        payload.insert(payload.end(), answer.begin(), answer.end());
        expect_message_with(payload);
    }

    void expect_message_with(const std::optional<bytes> &payload) {
        expect_of_message(model::fcot_message(payload), payload, {fcot_opcode, true}, pm_parse_fcot_info);
        support::call_log::take();
    }

    void expect_queries(const cmi_result &result) {
        const auto ask = [](auto function) {
            return [function](uint32_t *count, pm_fcot_info_t **records) {
                return function(model::handle, 1, 1, &range, count, records, model::last);
            };
        };
        expect_of_query(model::fcot_query(result), result, ask(pm_cmi_get_fcot_info));
        expect_of_query(model::fcot_query_with_diagnostics(result), result, ask(pm_get_next_port_fcot_info_with_ddm));
        support::call_log::take();
    }
};

TEST_F(transceiver_answer, has_the_records_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        answer made{random_transceivers(source)};
        expect_of_payload(model::fcot_records(*made.payload), made.payload,
                          [](const uint8_t *payload, uint32_t, uint32_t *count, pm_fcot_info_t **records) {
                              return pm_parse_cmi_get_fcot_info_res_payload(payload, count, records);
                          });
        if (source.one_in(3)) model::spoil(source, made.payload);
        if (made.payload) expect_message(*made.payload);
        expect_queries(model::random_result(source, made));
    });
}

TEST_F(transceiver_answer, cut_anywhere_is_refused) {
    for_random_cases(
        [this](random_source &source) {
            const bytes whole = random_transceivers(source);
            for (size_t size = 0; size <= whole.size() && !HasFailure(); ++size) {
                const bytes cut(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size));
                expect_message(cut);
                expect_queries({0, {cut}});
            }
        },
        80);
}

TEST_F(transceiver_answer, in_a_message_without_a_whole_header_is_refused) {
    for (size_t size = 0; size < message_header; ++size) expect_message_with(bytes(size, 0));
    expect_message_with({});
}

}  // namespace
