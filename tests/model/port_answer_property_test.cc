// SPDX-License-Identifier: Apache-2.0
// Answers with the records of ports, by every function that takes one.
#include "answer_property.h"
#include "naive_port_info.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using model::answer;
using model::answer_message;
using model::random_source;
using support::bytes;

constexpr uint32_t full_opcode = 324;
constexpr uint32_t next_opcode = 325;
constexpr uint32_t brief_opcode = 3141;
constexpr size_t brief_record_size = 51;

const pm_if_index_range_t range{0x01020300, 0x01020400};

class port_answer : public model::answer_property {
  protected:
    // Whether the elements were looked for once a record, behind the records.
    static void expect_walks(const model::full_outcome &expected, const answer &from) {
        std::vector<std::string> walks;
        if (!expected.records.empty() && from.payload->size() > model::elements_offset(*from.payload)) {
            const std::string place = std::to_string(model::elements_offset(*from.payload));
            walks.assign(expected.records.size(), "tlv_array_get_num_tlvs(+" + place + ", 1)");
        }
        EXPECT_EQ(take_calls("tlv_array_get_num_tlvs"), walks);
    }

    void expect_full_payload(const answer &from) {
        const auto expected = model::full_records(from);
        expect_of_payload(expected, from.payload, pm_parse_get_port_info_res_payload);
        expect_walks(expected, from);
        expect_of_payload(expected, from.payload, pm_parse_cmi_get_port_config_res_payload);
        expect_walks(expected, from);
    }

    void expect_full_message(const answer &from, const answer_message &in) {
        const auto expected = model::full_message(from, in);
        expect_of_message(expected, from.payload, in, pm_parse_get_port_info);
        expect_walks(expected, from);
    }

    void expect_next_message(const answer &from, const answer_message &in) {
        const auto expected = model::next_message(from, in);
        expect_of_message(expected, from.payload, in, pm_parse_get_next_port_info);
        // Its elements lie behind one record, whatever the count says.
        const bool has_elements = !expected.records.empty() && from.payload->size() > 197;
        EXPECT_EQ(take_calls("tlv_array_get_num_tlvs"),
                  std::vector<std::string>(has_elements ? 1 : 0, "tlv_array_get_num_tlvs(+197, 1)"));
    }

    void expect_brief_message(const answer &from, const answer_message &in) {
        expect_of_message(model::brief_message(from, in), from.payload, in, pm_parse_get_port_info_brief);
        support::call_log::take();
    }

    void expect_queries(const model::cmi_result &result) {
        expect_of_query(model::configuration(result), result, [](uint32_t *count, pm_port_info_t **records) {
            return pm_cmi_get_port_config(model::handle, PM_CONFIG_GET_FROM_OWNER, 1, &range, count, records,
                                          model::last);
        });
        expect_of_query(model::module_listing(result), result, [](uint32_t *count, pm_port_info_t **records) {
            return pm_cmi_get_module_interface_listing(model::handle, 2, range.first, model::last, count, records);
        });
        support::call_log::take();
    }

    // Every beginning of an answer, none of which may be read beyond its end.
    template <typename Expect>
    void cut_short(const answer &whole, Expect expect) {
        set_elements(whole.elements);
        for (size_t size = 0; size <= whole.payload->size() && !HasFailure(); ++size) {
            SCOPED_TRACE("its first " + std::to_string(size) + " bytes");
            expect(answer{bytes(whole.payload->begin(), whole.payload->begin() + static_cast<ptrdiff_t>(size)),
                          whole.elements});
        }
    }
};

TEST_F(port_answer, has_the_records_and_attributes_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        const answer made = model::random_full_answer(source);
        set_elements(made.elements);
        expect_full_payload(made);
        expect_full_message(made, model::random_message(source, full_opcode));
        expect_queries(model::random_result(source, made));
    });
}

TEST_F(port_answer, that_is_malformed_is_refused_as_the_model_does) {
    for_random_cases([this](random_source &source) {
        answer made = model::random_full_answer(source);
        set_elements(made.elements);
        model::spoil(source, made.payload);
        expect_full_payload(made);
        expect_full_message(made, model::random_message(source, full_opcode));
        expect_queries(model::random_result(source, made));
    });
}

TEST_F(port_answer, cut_anywhere_is_refused_or_loses_its_elements) {
    for_random_cases(
        [this](random_source &source) {
            cut_short(model::random_full_answer(source), [this](const answer &cut) { expect_full_payload(cut); });
        },
        80);
}

TEST_F(port_answer, about_the_next_port_has_the_record_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        answer made = model::random_next_answer(source);
        set_elements(made.elements);
        if (source.one_in(4)) model::spoil(source, made.payload);
        expect_next_message(made, model::random_message(source, next_opcode));
    });
}

TEST_F(port_answer, about_the_next_port_cut_anywhere_is_refused_or_loses_its_elements) {
    for_random_cases(
        [this](random_source &source) {
            cut_short(model::random_next_answer(source), [this](const answer &cut) {
                expect_next_message(cut, {next_opcode, true});
            });
        },
        80);
}

TEST_F(port_answer, in_brief_has_the_records_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        answer made{model::random_records(source, brief_record_size)};
        expect_of_payload(model::brief_records(*made.payload), made.payload, pm_parse_get_port_info_brief_res_payload);
        if (source.one_in(3)) model::spoil(source, made.payload);
        expect_brief_message(made, model::random_message(source, brief_opcode));
    });
}

TEST_F(port_answer, in_brief_cut_anywhere_is_refused) {
    for_random_cases(
        [this](random_source &source) {
            cut_short({model::random_records(source, brief_record_size)}, [this](const answer &cut) {
                expect_brief_message(cut, {brief_opcode, true});
            });
        },
        20);
}

}  // namespace
