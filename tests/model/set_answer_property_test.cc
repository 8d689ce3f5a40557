// SPDX-License-Identifier: Apache-2.0
// Answers to requests that set an attribute, and defaults of the switch.
#include "answer_property.h"
#include "naive_port_info.h"

namespace {

using model::answer;
using model::random_source;
using support::bytes;

constexpr size_t entry_size = 8;
const pm_if_index_range_t range{0x01020300, 0x01020400};

class set_answer : public model::answer_property {
  protected:
    void expect_query(const model::cmi_result &result) {
        expect_of_query(model::set_configuration(result), result, [](uint32_t *count, pm_set_port_result_t **entries) {
            const uint32_t value = 1;
            return pm_cmi_set_port_config(model::handle, nullptr, nullptr, 1, &range, PM_ATTR_ADMIN_STATE, 1, &value,
                                          count, entries, model::last);
        });
        support::call_log::take();
    }
};

TEST_F(set_answer, has_the_entries_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        answer made{model::random_records(source, entry_size)};
        expect_of_payload(model::set_results(made.payload), made.payload,
                          [](const uint8_t *payload, uint32_t, uint32_t *count, pm_set_port_result_t **entries) {
                              return pm_parse_set_port_info_res_payload(payload, count, entries);
                          });
        if (source.one_in(3)) model::spoil(source, made.payload);
        expect_query(model::random_result(source, made));
    });
}

TEST_F(set_answer, cut_anywhere_has_no_entries) {
    for_random_cases(
        [this](random_source &source) {
            const bytes whole = model::random_records(source, entry_size);
            for (size_t size = 0; size <= whole.size(); ++size) {
                expect_query({0, {bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(size))}});
            }
        },
        4);
}

TEST_F(set_answer, with_a_default_of_the_switch_has_it_as_it_came) {
    for_random_cases([](random_source &source) {
        const support::guarded_bytes payload(support::payload().be32(source.word()).append(source.some_bytes(14)));
        auto record = model::untouched<pm_system_default_config_t>();
        EXPECT_EQ(pm_parse_cmi_system_default_config_res_payload(payload.data(), &record),
                  model::number32(payload.data()));
        pm_system_default_config_t expected{payload.data()[4], payload.data()[5], {}};
        for (int i = 0; i < 3; ++i) expected.value[i] = model::as_it_came(payload.data() + 6 + 4 * i);
        EXPECT_EQ(model::first_difference(expected, record), "");
    });
}

}  // namespace
