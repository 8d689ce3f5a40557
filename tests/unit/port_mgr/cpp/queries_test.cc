// SPDX-License-Identifier: Apache-2.0
// The calls that wait: the request that each sends, its answer, and what becomes of failures.
#include <cerrno>
#include <functional>

#include "../port_config_fixture.h"
#include "../transceiver_record.h"
#include "cpp_layer_fixture.h"

namespace {

using port_mgr::origin;
using port_mgr::result;
using port_mgr::status;
using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::answer;
using unit::brief_answer;
using unit::calls;
using unit::full_answer;
using unit::handle;
using unit::port_info_request;
using unit::queried;
using unit::range_request;
using unit::sent;

constexpr if_index_t ethernet_port = 0x02030405;
const std::vector<pm_if_index_range_t> two_ranges{{0x02030405, 0x02060708}, {0x01090a0b, 0x010c0d0e}};

payload ranges_on_wire() { return payload().be32(0x02030405).be32(0x02060708).be32(0x01090a0b).be32(0x010c0d0e); }

// What a query came to, whatever its records are.
struct outcome {
    bool has_records;
    status why;
    std::vector<if_index_t> indexes;

    template <typename Record>
    outcome(const result<port_mgr::records<Record>> &of) : has_records(of), why(of.why()) {
        if (of) indexes = unit::indexes_of(*of);
    }
};

struct query_case {
    const char *name;
    std::function<outcome()> ask;
    std::string request;
    bytes answer;  // about ports 0x01000001 and 0x01000002, or the first of them
    size_t ports;
};

void PrintTo(const query_case &query, std::ostream *to) { *to << query.name; }
std::string name_of(const testing::TestParamInfo<query_case> &query) { return query.param.name; }

void expect_failure(const outcome &failed, uint32_t value, origin from) {
    EXPECT_FALSE(failed.has_records);
    EXPECT_EQ(failed.why.value(), value);
    EXPECT_EQ(failed.why.from(), from);
}

// ---- over messages

class cpp_message_query : public unit::cpp_layer, public testing::WithParamInterface<query_case> {};

TEST_P(cpp_message_query, sends_what_the_c_function_sends_and_has_the_records_of_the_answer) {
    will_answer(GetParam().answer);
    const outcome asked = GetParam().ask();
    EXPECT_TRUE(asked.has_records);
    EXPECT_TRUE(asked.why.ok());
    EXPECT_EQ(asked.indexes.size(), GetParam().ports);
    EXPECT_EQ(asked.indexes.front(), 0x01000001U);
    EXPECT_THAT(transported(),
                ElementsAre(GetParam().request, unit::received, unit::dropped, "mts_drop(0x55667788, message 0x7002)"));
}

TEST_P(cpp_message_query, that_cannot_be_sent_tells_the_transports_error) {
    transport.will_send(-1, EHOSTUNREACH);
    expect_failure(GetParam().ask(), EHOSTUNREACH, origin::exchange);
    output.take();
}

TEST_P(cpp_message_query, that_is_not_answered_tells_the_transports_error) {
    transport.will_send();
    transport.will_receive(-1, ETIMEDOUT);
    transport.will_drop();
    expect_failure(GetParam().ask(), ETIMEDOUT, origin::exchange);
}

TEST_P(cpp_message_query, whose_request_cannot_be_dropped_drops_its_answer_all_the_same) {
    transport.will_send();
    transport.will_receive_answer(GetParam().answer);
    transport.will_drop(-1, EBADF);
    transport.will_drop();
    expect_failure(GetParam().ask(), EBADF, origin::exchange);
}

TEST_P(cpp_message_query, whose_answer_cannot_be_dropped_has_its_records) {
    transport.will_send();
    transport.will_receive_answer(GetParam().answer);
    transport.will_drop();
    transport.will_drop(-1, EBADF);
    EXPECT_TRUE(GetParam().ask().has_records);
}

TEST_P(cpp_message_query, that_is_answered_with_a_status_tells_it_as_the_services) {
    for (const uint32_t told : {uint32_t{ETIMEDOUT}, PM_ERR_REJECTED, 0xffffffffU}) {
        will_answer(answer(told, 0));
        expect_failure(GetParam().ask(), told, origin::answer);
        output.take();
    }
}

TEST_P(cpp_message_query, that_is_answered_in_half_is_a_failure_of_the_answer) {
    will_answer(unit::cut(GetParam().answer, GetParam().answer.size() / 2));
    expect_failure(GetParam().ask(), PM_ERR_INVALID_PARAM, origin::answer);
    output.take();
}

TEST_P(cpp_message_query, without_memory_for_its_records_says_so) {
    will_answer(GetParam().answer);
    // The request may take a block, too.
    heap.fail_allocation(GetParam().request.find(", 325,") == std::string::npos ? 2 : 1);
    expect_failure(GetParam().ask(), 1, origin::answer);
    output.take();
}

const if_index_t port = 0x01000001;

INSTANTIATE_TEST_SUITE_P(
    all, cpp_message_query,
    testing::Values(query_case{"get_port_info", [] { return port_mgr::get_port_info(handle, two_ranges); },
                               sent(45, 324, port_info_request(0, 2).append(ranges_on_wire())),
                               full_answer({port, port + 1}), 2},
                    query_case{"get_port_info_range",
                               [] { return port_mgr::get_port_info_range(handle, ethernet_port, 0x02060708); },
                               sent(45, 324, range_request(0x02030405, 0x02060708)), full_answer({port, port + 1}), 2},
                    query_case{"get_port_info_brief", [] { return port_mgr::get_port_info_brief(handle, two_ranges); },
                               sent(45, 3141, port_info_request(0, 2).append(ranges_on_wire())),
                               brief_answer({port, port + 1}), 2},
                    query_case{"get_all_port_info_brief", [] { return port_mgr::get_all_port_info_brief(handle); },
                               sent(43, 3141, port_info_request(1, 0)), brief_answer({port, port + 1}), 2},
                    query_case{"get_next_port_info", [] { return port_mgr::get_next_port_info(handle, ethernet_port); },
                               sent(45, 325, payload().be32(ethernet_port)), full_answer({port}), 1}),
    name_of);

class cpp_query : public unit::cpp_layer {};

TEST_F(cpp_query, has_the_records_as_c_has_them) {
    will_answer(full_answer({0x01020304}));
    const auto full = port_mgr::get_port_info_range(handle, 0x01020304, 0x01020304);
    ASSERT_TRUE(full);
    EXPECT_EQ(unit::bytes_of((*full)[0]), unit::expected_record(unit::base_record_of(0x01020304)));
}

TEST_F(cpp_query, of_nothing_has_no_records_and_succeeds) {
    will_answer(full_answer({}));
    const auto none = port_mgr::get_port_info_range(handle, 0x01020304, 0x01020304);
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->empty());
}

TEST_F(cpp_query, without_payload_in_its_answer_tells_what_the_parser_does) {
    will_answer({});
    expect_failure(port_mgr::get_all_port_info_brief(handle), PM_ERR_INVALID_PARAM, origin::answer);
    will_answer({});
    expect_failure(port_mgr::get_next_port_info(handle, 0), PM_ERR_NO_PAYLOAD, origin::answer);
    EXPECT_EQ(output.take(), "pm_parse_get_next_port_info: NULL payload \n");
}

TEST_F(cpp_query, of_no_range_is_refused_and_sends_nothing) {
    expect_failure(port_mgr::get_port_info(handle, {}), PM_ERR_INVALID_PARAM, origin::exchange);
    expect_failure(port_mgr::get_port_info_brief(handle, {}), PM_ERR_INVALID_PARAM, origin::exchange);
    expect_failure(port_mgr::get_port_config(handle, {}), PM_ERR_FAILURE, origin::exchange);
    expect_failure(port_mgr::get_fcot_info(handle, {}), PM_ERR_FAILURE, origin::exchange);
    expect_failure(port_mgr::get_fcot_info_with_ddm(handle, {}), PM_ERR_FAILURE, origin::exchange);
    EXPECT_EQ(assertions.take().size(), 2U);
    EXPECT_THAT(transported(), IsEmpty());
}

TEST_F(cpp_query, on_no_handle_is_refused_and_drops_nothing) {
    expect_failure(port_mgr::get_port_info(0, two_ranges), PM_ERR_INVALID_PARAM, origin::exchange);
    EXPECT_EQ(assertions.take().size(), 1U);
    EXPECT_THAT(transported(), IsEmpty());
}

// ---- over CMI

constexpr uint32_t wait = unit::wait;

class cpp_cmi_query : public unit::cpp_layer, public testing::WithParamInterface<query_case> {};

TEST_P(cpp_cmi_query, sends_what_the_c_function_sends_and_has_the_records_of_the_answer) {
    transport.will_answer_query(0, GetParam().answer);
    const outcome asked = GetParam().ask();
    EXPECT_TRUE(asked.has_records);
    EXPECT_TRUE(asked.why.ok());
    EXPECT_EQ(asked.indexes, (std::vector<if_index_t>{port, port + 1}));
    EXPECT_THAT(transported(), ElementsAre(GetParam().request));
}

TEST_P(cpp_cmi_query, that_fails_tells_the_transports_error) {
    transport.will_answer_query(EHOSTUNREACH, {});
    const outcome failed = GetParam().ask();
    expect_failure(failed, EHOSTUNREACH, origin::exchange);
    EXPECT_TRUE(failed.why.is_transport_failure());
}

TEST_P(cpp_cmi_query, that_is_answered_with_a_status_tells_it) {
    transport.will_answer_query(0, bytes(answer(PM_ERR_REJECTED, 0)));
    expect_failure(GetParam().ask(), PM_ERR_REJECTED, origin::exchange);
}

TEST_P(cpp_cmi_query, that_is_answered_in_half_is_a_failure) {
    transport.will_answer_query(0, unit::cut(GetParam().answer, GetParam().answer.size() / 2));
    expect_failure(GetParam().ask(), PM_ERR_INVALID_PARAM, origin::exchange);
}

bytes fcot_answer(uint8_t layout) {
    return answer(0, 2)
        .append(unit::transceiver_on_wire(port, layout))
        .append(unit::transceiver_on_wire(port + 1, layout));
}

bytes fcot_request(uint32_t flavour) { return payload().be32(2).be32(flavour).append(ranges_on_wire()); }

INSTANTIATE_TEST_SUITE_P(
    all, cpp_cmi_query,
    testing::Values(
        query_case{"get_port_config",
                   [] { return port_mgr::get_port_config(handle, two_ranges, PM_CONFIG_GET_BY_MEMBER, wait); },
                   queried(2827, 2, payload().fill(11, 0).be32(2).append(ranges_on_wire()), 45),
                   full_answer({port, port + 1}), 2},
        query_case{"get_module_interface_listing",
                   [] { return port_mgr::get_module_interface_listing(handle, 7, ethernet_port, wait); },
                   queried(2840, 1, {7, 2}, 45), full_answer({port, port + 1}), 2},
        query_case{"get_fcot_info", [] { return port_mgr::get_fcot_info(handle, two_ranges, wait); },
                   queried(2832, 0, fcot_request(1), 45), fcot_answer(0), 2},
        query_case{"get_fcot_info_with_ddm", [] { return port_mgr::get_fcot_info_with_ddm(handle, two_ranges, wait); },
                   queried(2832, 0, fcot_request(2), 45), fcot_answer(1), 2}),
    name_of);

TEST_F(cpp_query, over_cmi_waits_as_long_as_the_transport_does_and_asks_the_owner_unless_told) {
    const auto ask_all = [&] {
        static_cast<void>(port_mgr::get_port_config(handle, two_ranges));
        static_cast<void>(port_mgr::get_module_interface_listing(handle, 1, port));
        static_cast<void>(port_mgr::get_fcot_info(handle, two_ranges));
        static_cast<void>(port_mgr::get_fcot_info_with_ddm(handle, two_ranges));
    };
    for (int i = 0; i < 4; ++i) transport.will_answer_query(EHOSTUNREACH, {});
    ask_all();
    const calls log = sent_requests();
    EXPECT_THAT(log, testing::Each(testing::EndsWith(", 0x55667788, 0)")));
    EXPECT_THAT(log, ElementsAre(testing::StartsWith("cmi_req_resp(2827, 1, "), testing::_, testing::_, testing::_));
}

TEST_F(cpp_query, with_diagnostics_that_succeeds_without_records_is_a_malformed_answer) {
    transport.will_answer_query(0, bytes(answer(0, 2)));
    expect_failure(port_mgr::get_fcot_info_with_ddm(handle, two_ranges), PM_ERR_INVALID_PARAM, origin::exchange);
    transport.will_answer_query(ECONNRESET, fcot_answer(1));
    expect_failure(port_mgr::get_fcot_info_with_ddm(handle, two_ranges), PM_ERR_INVALID_PARAM, origin::exchange);
}

TEST_F(cpp_query, with_diagnostics_of_no_transceivers_succeeds_without_records) {
    transport.will_answer_query(0, bytes(answer(0, 0)));
    const auto none = port_mgr::get_fcot_info_with_ddm(handle, two_ranges);
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->empty());
}

}  // namespace
