// SPDX-License-Identifier: Apache-2.0
// What all functions that take a message check.
#include "library_test.h"
#include "parse_outputs.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::allocations;
using unit::answer;
using unit::cut;
using unit::untouched;

struct message_case {
    const char *name;
    uint32_t opcode;
    uint32_t (*parse)(const mts_msg_t *message, uint32_t *count, void **records);
    bytes good;
    uint32_t missing_payload_status;
    const char *missing_payload_line;
};

void PrintTo(const message_case &message, std::ostream *to) { *to << message.name; }

template <auto parse, typename Record>
uint32_t parse_as(const mts_msg_t *message, uint32_t *count, void **records) {
    return parse(message, count, reinterpret_cast<Record **>(records));
}

class response_message : public support::library_test, public testing::WithParamInterface<message_case> {
  protected:
    uint32_t parse(const mts_msg_t *message) { return GetParam().parse(message, &count, &records); }

    uint32_t parse(const bytes &content) {
        const mts_msg_t message = transport.message(GetParam().opcode, content);
        const uint32_t status = parse(&message);
        transport.drop(message);
        return status;
    }

    void expect_parsed() {
        EXPECT_EQ(count, 1U);
        ASSERT_NE(records, nullptr);
        EXPECT_EQ(support::hex(records, 4), "04030201");
        std::free(std::exchange(records, nullptr));
    }

    [[nodiscard]] std::string as_reported() const { return std::string("port_info_response.cc: ") + GetParam().name; }

    uint32_t count = untouched;
    void *records = nullptr;
};

TEST_P(response_message, is_checked_and_parsed) {
    EXPECT_EQ(parse(GetParam().good), 0U);
    const auto calls = support::call_log::take();
    EXPECT_THAT(calls, testing::IsSupersetOf({"mts_is_response(message 0x7001)", "mts_opc_get(message 0x7001)",
                                              "mts_payload_get(message 0x7001)"}));
    expect_parsed();
}

TEST_P(response_message, stays_the_callers) {
    const mts_msg_t message = transport.message(GetParam().opcode, GetParam().good);
    EXPECT_EQ(parse(&message), 0U);
    EXPECT_NE(transport.find(&message), nullptr);
    transport.drop(message);
    expect_parsed();
}

TEST_P(response_message, that_is_no_response_is_reported_and_parsed) {
    const mts_msg_t message = transport.message(GetParam().opcode, GetParam().good, false);
    EXPECT_EQ(parse(&message), 0U);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported()));
    transport.drop(message);
    expect_parsed();
}

TEST_P(response_message, of_another_opcode_is_reported_and_parsed) {
    for (const uint32_t opcode : {0U, 323U, 324U, 325U, 3141U, 3147U, 324U + 65536U}) {
        if (opcode == GetParam().opcode) continue;
        const mts_msg_t message = transport.message(opcode, GetParam().good);
        EXPECT_EQ(parse(&message), 0U);
        EXPECT_THAT(assertions.take(), ElementsAre(as_reported())) << opcode;
        transport.drop(message);
        expect_parsed();
    }
}

TEST_P(response_message, of_another_opcode_that_is_no_response_is_reported_twice) {
    const mts_msg_t message = transport.message(1, GetParam().good, false);
    EXPECT_EQ(parse(&message), 0U);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported(), as_reported()));
    transport.drop(message);
    expect_parsed();
}

TEST_P(response_message, that_is_null_is_reported_three_times_and_has_no_payload) {
    EXPECT_EQ(parse(nullptr), GetParam().missing_payload_status);
    EXPECT_THAT(assertions.take(), ElementsAre(as_reported(), as_reported(), as_reported()));
    EXPECT_EQ(output.take(), GetParam().missing_payload_line);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
    EXPECT_EQ(count, untouched);
    EXPECT_EQ(records, nullptr);
}

TEST_P(response_message, without_payload_is_refused_by_its_parser) {
    const mts_msg_t message = transport.message(GetParam().opcode, {});
    EXPECT_EQ(parse(&message), GetParam().missing_payload_status);
    EXPECT_EQ(output.take(), GetParam().missing_payload_line);
    EXPECT_EQ(count, untouched);
    transport.drop(message);
}

TEST_P(response_message, has_no_place_without_both_outputs) {
    const mts_msg_t message = transport.message(GetParam().opcode, GetParam().good);
    EXPECT_EQ(GetParam().parse(&message, nullptr, &records), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(GetParam().parse(&message, &count, nullptr), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(count, untouched);
    EXPECT_EQ(records, nullptr);
    transport.drop(message);
}

TEST_P(response_message, cut_short_anywhere_is_malformed) {
    const bytes &good = GetParam().good;
    for (size_t size = 0; size < good.size(); ++size) {
        ASSERT_EQ(parse(cut(good, size)), PM_ERR_INVALID_PARAM) << size;
        ASSERT_EQ(count, untouched) << size;
    }
    EXPECT_EQ(allocations(), 0);
}

TEST_P(response_message, returns_its_status_first) {
    EXPECT_EQ(parse(payload().be32(PM_ERR_REJECTED)), PM_ERR_REJECTED);
    EXPECT_EQ(parse(answer(PM_ERR_REJECTED, 0xffffffff)), PM_ERR_REJECTED);
    EXPECT_EQ(count, untouched);
    output.take();
}

// Bytes 1, 2, 3, ...
bytes rising(size_t size) {
    bytes content;
    for (size_t i = 1; i <= size; ++i) content.push_back(static_cast<uint8_t>(i));
    return content;
}

INSTANTIATE_TEST_SUITE_P(functions, response_message,
                         testing::Values(message_case{"pm_parse_get_port_info", 324,
                                                      parse_as<pm_parse_get_port_info, pm_port_info_t>,
                                                      answer(0, 1).append(rising(189)), PM_ERR_INVALID_PARAM, ""},
                                         message_case{"pm_parse_get_port_info_brief", 3141,
                                                      parse_as<pm_parse_get_port_info_brief, pm_port_info_brief_t>,
                                                      answer(0, 1).append(rising(51)), PM_ERR_INVALID_PARAM, ""},
                                         message_case{"pm_parse_get_next_port_info", 325,
                                                      parse_as<pm_parse_get_next_port_info, pm_port_info_t>,
                                                      answer(0, 1).append(rising(189)), PM_ERR_NO_PAYLOAD,
                                                      "pm_parse_get_next_port_info: NULL payload \n"}),
                         [](const auto &each) { return std::string(each.param.name); });

}  // namespace
