// SPDX-License-Identifier: Apache-2.0
// Requests about sub-interfaces and the answers to them.
#include <algorithm>

#include "naive_bytes.h"
#include "naive_sub_interfaces.h"
#include "property.h"

namespace {

using model::random_source;
using support::bytes;

// An interface with sub-interfaces, most often.
if_index_t random_interface(random_source &source) {
    const auto type = source.pick<uint32_t>({2, 2, 2, 2, 4, 4, 22, 22, 26, 26});
    const uint32_t number = source.one_in(4) ? source.below(4096) : source.below(40);
    return (source.one_in(40) ? source.below(256) : type) << 24 | source.below(3) << 12 | number;
}

std::optional<bytes> random_answer(random_source &source) {
    if (source.one_in(10)) return {};
    bytes answer = support::payload().be32(source.word()).be32(source.word());
    if (source.one_in(4)) answer.resize(source.below(12));
    return answer;
}

class sub_interfaces : public model::property {
  protected:
    // Makes a request that is answered so, when one is sent, and looks at what is sent and what comes of it.
    template <typename Call>
    void expect_request(const model::sub_interface_request &expected, const std::optional<bytes> &answer, Call call) {
        if (expected.status == 0) transport.will_answer_query(0, answer);
        EXPECT_EQ(call(), expected.status != 0 ? expected.status : model::status_of_answer(answer));
        std::vector<std::string> sent;
        if (expected.status == 0) {
            sent.push_back("cmi_req_resp(2837, 3, <" + support::hex(expected.payload) + ">, " +
                           std::to_string(expected.payload.size()) + ", 0, 0, 175, 0x55667788, 9)");
        }
        EXPECT_EQ(take_calls("cmi_req_resp"), sent);
        EXPECT_EQ(heap.live_blocks(), 0);
    }
};

TEST_F(sub_interfaces, of_ranges_are_asked_for_as_the_model_does) {
    for_random_cases(
        [this](random_source &source) {
            std::vector<pm_if_index_range_t> ranges(source.below(5));
            for (auto &range : ranges) {
                range.first = random_interface(source);
                range.last = source.one_in(8) ? random_interface(source) : range.first + source.below(8);
            }
            std::vector<uint32_t> list{source.word(), static_cast<uint32_t>(ranges.size()), source.word()};
            for (const auto &range : ranges) list.insert(list.end(), {range.first, range.last});
            const uint32_t flag = source.one_in(2) ? source.word() : 0;
            expect_request(model::request_of_ranges(flag != 0, ranges), random_answer(source), [&] {
                return pm_cli_config_sub_interface(model::handle, flag, PM_IF_KINDS_WITH_SUB_INTF, 0,
                                                   reinterpret_cast<const pm_if_range_list_t *>(list.data()),
                                                   model::last);
            });
        },
        4);
}

TEST_F(sub_interfaces, of_a_bitmap_are_asked_for_as_the_model_does) {
    for_random_cases(
        [this](random_source &source) {
            pm_snmp_sub_intf_t record{random_interface(source), {source.word(), source.word(), source.word()}, {}};
            if (!source.one_in(6)) record.main &= ~0xfffU;
            for (uint32_t rest = source.below(300); rest > 0; --rest) record.bitmap[source.below(512)] = source.byte();
            expect_request(model::request_of_bitmap(record), random_answer(source),
                           [&] { return pm_snmp_config_sub_interface(model::handle, &record, model::last); });
        },
        8);
}

TEST_F(sub_interfaces, are_valid_without_reserved_numbers) {
    for_random_cases([](random_source &source) {
        bitset_t set{512, {}};
        std::ranges::copy(source.some_bytes(512), set.bits);
        if (!source.one_in(3)) set.bits[0] = static_cast<uint8_t>(set.bits[0] % 64);
        if (!source.one_in(3)) set.bits[511] = static_cast<uint8_t>(set.bits[511] / 4 * 4);
        EXPECT_EQ(pm_check_is_valid_sub_intf_bitset(&set), model::is_valid_set(set) ? 1 : 0);
        support::call_log::take();
    });
}

}  // namespace
