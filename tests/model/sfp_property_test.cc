// SPDX-License-Identifier: Apache-2.0
// The readings of transceivers, as line cards send them.
#include <algorithm>

#include "answer_property.h"
#include "naive_transceiver.h"

namespace {

using model::answer;
using model::element;
using model::random_source;
using support::bytes;

constexpr uint16_t extra_type = 80;
constexpr size_t extra_size = 16;
constexpr size_t readings_size = 176;

element random_element(random_source &source) {
    if (source.one_in(6)) return {source.word() | 1};
    if (source.one_in(2)) return {0, extra_type, extra_size, source.some_bytes(extra_size)};
    const auto other = source.pick<uint16_t>({0, 79, 79, 81, 0x5000, 65535});
    return {0, other, static_cast<uint16_t>(source.word()), {}};
}

// Readings, most often good ones, with elements behind them.
answer random_readings(random_source &source) {
    const auto type = static_cast<uint16_t>(source.one_in(16) ? source.word() : 27);
    const auto length = static_cast<uint16_t>(source.one_in(16) ? source.word() : 172);
    const uint32_t status = source.one_in(5) ? source.word() : 0;
    answer made{support::payload()
                    .be16(type)
                    .be16(length)
                    .append(source.some_bytes(4))
                    .be32(status)
                    .append(source.some_bytes(164))
                    .append(source.some_bytes(source.below(4)))};
    made.elements.resize(source.below(6));
    std::ranges::generate(made.elements, [&] { return random_element(source); });
    return made;
}

class sfp_answer : public model::answer_property {
  protected:
    void expect_readings(const model::sfp_outcome &expected, uint32_t status) {
        EXPECT_EQ(status, expected.status);
        EXPECT_EQ(model::first_difference(expected.info, info), "");
        EXPECT_EQ(model::first_difference(expected.extra, extra), "");
        EXPECT_EQ(output.take(), expected.printed);
        EXPECT_EQ(take_reporters(), expected.reporters);
        info = model::untouched<pm_sfp_diag_info_t>();
        extra = model::untouched<pm_sfp_diag_extra_t>();
    }

    void expect_payload(const answer &from) {
        const support::guarded_bytes lies(from.payload.value_or(bytes{}));
        elements.set_origin(lies.data());
        const auto expected = model::sfp_readings(from);
        const uint8_t *const payload = from.payload ? lies.data() : nullptr;
        expect_readings(expected, pm_parse_get_sfp_info(payload, lies.size(), &info, &extra));
        const bool has_elements = expected.status == 0 && expected.info.status == 0 && lies.size() > readings_size;
        EXPECT_EQ(take_calls("tlv_aligned_array_get_num_tlvs"),
                  std::vector<std::string>(has_elements ? 1 : 0, "tlv_aligned_array_get_num_tlvs(+176, 1)"));
    }

    // The line card's status is the result when nothing else went wrong.
    void expect_query(const answer &from, if_index_t if_index) {
        transport.will_send();
        transport.will_receive_answer(from.payload);
        transport.will_drop();
        transport.will_drop();
        auto expected = model::sfp_readings(from);
        if (expected.status == 0) expected.status = expected.info.status;
        expect_readings(expected, pm_get_sfp_diag_info(model::handle, if_index, &info, &extra));
        EXPECT_EQ(take_calls("mts_send"), std::vector<std::string>{request_for(if_index)});
    }

    // The slot of an index is its second byte here.
    static std::string request_for(if_index_t if_index) {
        const uint32_t node = (((if_index / 65536 % 256 + 1) << 8) | 2) & 0xff02;
        char text[200];
        std::snprintf(text, sizeof text, "mts_send(0x55667788, %#x, 181, 425, <%08x>, 4, 0, 0)", node, if_index);
        return text;
    }

    pm_sfp_diag_info_t info = model::untouched<pm_sfp_diag_info_t>();
    pm_sfp_diag_extra_t extra = model::untouched<pm_sfp_diag_extra_t>();
};

TEST_F(sfp_answer, has_the_readings_that_the_model_finds_in_it) {
    for_random_cases([this](random_source &source) {
        answer made = random_readings(source);
        if (source.one_in(10)) made.payload.reset();
        set_elements(made.elements);
        expect_payload(made);
        expect_query(made, source.word());
    });
}

TEST_F(sfp_answer, cut_anywhere_is_refused_or_loses_its_elements) {
    for_random_cases(
        [this](random_source &source) {
            answer made = random_readings(source);
            set_elements(made.elements);
            for (; !made.payload->empty(); made.payload->pop_back()) expect_payload(made);
            expect_payload(made);
        },
        10);
}

}  // namespace
