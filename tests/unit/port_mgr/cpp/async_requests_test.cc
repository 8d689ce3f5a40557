// SPDX-License-Identifier: Apache-2.0
// Requests that do not wait: what is sent, which answer ends which request, and cancelling.
#include <set>
#include <type_traits>

#include "async_requests_fixture.h"

namespace {

using port_mgr::origin;
using port_mgr::result;
using port_mgr::status;
using support::bytes;
using support::payload;
using testing::ElementsAre;
using testing::IsEmpty;
using unit::async_requests;
using unit::calls;
using unit::cpp_async;
using unit::dropped_message;
using unit::full_answer;
using unit::kept_in;
using unit::long_limit;
using unit::one_range;
using unit::received_any;
using unit::sent;
using unit::ticket;

static_assert(!std::is_copy_constructible_v<async_requests> && !std::is_move_constructible_v<async_requests>);
static_assert(unit::clock_type::is_steady);

// ---- sending

struct send_case {
    const char *name;
    std::function<result<ticket>(async_requests &, calls &)> send;
    std::string request;
    bytes answer;
    const char *ended;
};

void PrintTo(const send_case &sending, std::ostream *to) { *to << sending.name; }

class cpp_async_send : public cpp_async, public testing::WithParamInterface<send_case> {};

TEST_P(cpp_async_send, sends_what_the_c_function_sends_at_once_and_ends_with_the_records) {
    transport.will_send();
    const auto number = GetParam().send(*requests, ended);
    ASSERT_TRUE(number);
    EXPECT_EQ(requests->under_way(), 1U);
    EXPECT_THAT(transported(), ElementsAre(GetParam().request));
    transport.will_receive_answer_to(0x7001, GetParam().answer);
    will_drop(2);
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(transported(), ElementsAre(received_any, dropped_message(0x7001), dropped_message(0x7002)));
    EXPECT_THAT(take_ended(), ElementsAre(GetParam().ended));
    EXPECT_EQ(requests->under_way(), 0U);
}

TEST_P(cpp_async_send, that_fails_tells_why_and_calls_nothing) {
    transport.will_send(-1, EAGAIN);
    const auto number = GetParam().send(*requests, ended);
    ASSERT_FALSE(number);
    EXPECT_EQ(number.why().value(), uint32_t{EAGAIN});
    EXPECT_TRUE(number.why().is_transport_failure());
    EXPECT_EQ(requests->under_way(), 0U);
    EXPECT_EQ(requests->poll_timeout(), -1);
}

const std::vector<pm_if_index_range_t> two_ranges{{0x02030405, 0x02060708}, {0x01090a0b, 0x010c0d0e}};

bytes two_ranges_request() {
    return unit::port_info_request(0, 2).be32(0x02030405).be32(0x02060708).be32(0x01090a0b).be32(0x010c0d0e);
}

INSTANTIATE_TEST_SUITE_P(
    all, cpp_async_send,
    testing::Values(
        send_case{
            "get_port_info",
            [](auto &of, auto &ended) { return of.get_port_info(two_ranges, long_limit, kept_in(ended, "ended")); },
            sent(45, 324, two_ranges_request()), full_answer({1, 2}), "ended: 0x1 0x2"},
        send_case{"get_port_info_range",
                  [](auto &of, auto &ended) {
                      return of.get_port_info_range(one_range, long_limit, kept_in(ended, "ended"));
                  },
                  sent(45, 324, unit::range_request(0x02000001, 0x02000002)), full_answer({3}), "ended: 0x3"},
        send_case{"get_port_info_brief",
                  [](auto &of, auto &ended) {
                      return of.get_port_info_brief(two_ranges, long_limit, kept_in(ended, "ended"));
                  },
                  sent(45, 3141, two_ranges_request()), unit::brief_answer({4, 5}), "ended: 0x4 0x5"},
        send_case{"get_all_port_info_brief",
                  [](auto &of, auto &ended) { return of.get_all_port_info_brief(long_limit, kept_in(ended, "ended")); },
                  sent(43, 3141, unit::port_info_request(1, 0)), unit::brief_answer({6}), "ended: 0x6"},
        send_case{"get_next_port_info",
                  [](auto &of, auto &ended) {
                      return of.get_next_port_info(0x02030405, long_limit, kept_in(ended, "ended"));
                  },
                  sent(45, 325, payload().be32(0x02030405)), full_answer({7}), "ended: 0x7"}),
    [](const auto &sending) { return std::string(sending.param.name); });

TEST_F(cpp_async, refused_by_the_c_function_is_not_sent) {
    EXPECT_EQ(requests->get_port_info({}, long_limit, as("none")).why().value(), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(requests->get_port_info_brief({}, long_limit, as("none")).why().value(), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(assertions.take().size(), 2U);
    EXPECT_EQ(requests->under_way(), 0U);
    EXPECT_THAT(transported(), IsEmpty());
}

TEST_F(cpp_async, has_a_number_that_is_never_used_again) {
    std::set<ticket> tickets;
    for (int i = 0; i < 3; ++i) tickets.insert(send("x", std::chrono::seconds(-1)));
    will_fail(ETIMEDOUT);
    for (int i = 0; i < 3; ++i) {
        will_fail(ETIMEDOUT);
        transport.will_drop();
    }
    EXPECT_EQ(requests->process(), 3U);
    for (int i = 0; i < 3; ++i) tickets.insert(send("x"));
    EXPECT_EQ(tickets.size(), 6U);
    EXPECT_FALSE(tickets.contains(0));
    EXPECT_EQ(take_ended().size(), 3U);
    give_up();
}

// ---- answers

TEST_F(cpp_async, ends_with_its_own_answer_whatever_the_order) {
    send("a");
    send("b");
    send("c");
    EXPECT_EQ(requests->under_way(), 3U);
    will_receive(0x7003, {3});
    will_receive(0x7001, {1});
    will_receive(0x7002, {2});
    EXPECT_EQ(requests->process(), 3U);
    EXPECT_THAT(take_ended(), ElementsAre("c: 0x3", "a: 0x1", "b: 0x2"));
}

TEST_F(cpp_async, waits_on_while_others_end) {
    send("a");
    send("b");
    will_receive(0x7002, {2});
    will_fail(ETIMEDOUT);
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("b: 0x2"));
    EXPECT_EQ(requests->under_way(), 1U);
    will_receive(0x7001, {1});
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("a: 0x1"));
}

TEST_F(cpp_async, is_told_what_its_answer_tells_instead_of_records) {
    status told;
    send_then([&](const auto &answer) { told = answer.why(); });
    transport.will_receive_answer_to(0x7001, bytes(unit::answer(PM_ERR_INVALID_RANGE, 0)));
    will_drop(2);
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_EQ(told.value(), PM_ERR_INVALID_RANGE);
    EXPECT_EQ(told.from(), origin::answer);
}

TEST_F(cpp_async, hands_over_records_that_outlive_the_call) {
    port_mgr::records<pm_port_info_t> kept;
    send_then([&](auto answer) { kept = *std::move(answer); });
    will_receive(0x7001, {7});
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_EQ(heap.live_blocks(), 1);
    EXPECT_EQ(unit::indexes_of(kept), std::vector<if_index_t>{7});
    kept = {};
}

TEST_F(cpp_async, leaves_answers_to_nobody_dropped) {
    send("a");
    transport.will_receive_answer_to(0x6fff, full_answer({9}));
    transport.will_drop();
    EXPECT_EQ(requests->process(), 0U);
    EXPECT_THAT(transported(), testing::Contains(dropped_message(0x7002)));
    EXPECT_EQ(requests->under_way(), 1U);
    give_up();
}

TEST_F(cpp_async, drops_an_answer_to_nobody_with_nothing_under_way_too) {
    transport.will_receive_answer_to(0x6fff, full_answer({9}));
    transport.will_drop();
    EXPECT_EQ(requests->process(), 0U);
}

TEST_F(cpp_async, stays_under_way_when_nothing_came) {
    send("a");
    for (const uint32_t error : {ETIMEDOUT, EINTR}) {
        will_fail(error);
        EXPECT_EQ(requests->process(), 0U);
        EXPECT_EQ(requests->under_way(), 1U);
    }
    give_up();
}

// What is called sends again, and every such request is answered at once.
TEST_F(cpp_async, takes_no_more_answers_at_once_than_requests_were_under_way) {
    const async_requests::done<pm_port_info_t> again = [&](const auto &) {
        ended.push_back("again");
        EXPECT_TRUE(requests->get_port_info_range(one_range, long_limit, again));
    };
    send_then(again);
    send("b");
    for (const uint32_t token : {0x7001U, 0x7004U}) {
        transport.will_receive_answer_to(token, full_answer({1}));
        transport.will_drop();
        transport.will_send();
        transport.will_drop();
    }
    EXPECT_EQ(requests->process(), 2U);
    EXPECT_THAT(take_ended(), ElementsAre("again", "again"));
    EXPECT_EQ(requests->under_way(), 2U);
    give_up();
}

TEST_F(cpp_async, looks_once_when_nothing_is_under_way) {
    will_fail(ETIMEDOUT);
    EXPECT_EQ(requests->process(), 0U);
    EXPECT_THAT(transported(), ElementsAre(received_any));
}

TEST_F(cpp_async, given_up_with_its_object_is_not_called) {
    send("a");
    send("b");
    transported();
    give_up();
    EXPECT_THAT(transported(), ElementsAre(dropped_message(0x7001), dropped_message(0x7002)));
}

// ---- cancelling

TEST_F(cpp_async, that_is_cancelled_is_not_called_and_has_its_answer_dropped) {
    const ticket a = send("a");
    send("b");
    transport.will_drop();
    EXPECT_TRUE(requests->cancel(a));
    EXPECT_EQ(requests->under_way(), 1U);
    EXPECT_FALSE(requests->cancel(a));
    transport.will_receive_answer_to(0x7001, full_answer({1}));
    transport.will_drop();
    EXPECT_EQ(requests->process(), 0U);
    will_receive(0x7002, {2});
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("b: 0x2"));
}

TEST_F(cpp_async, that_was_never_sent_cannot_be_cancelled) {
    const ticket a = send("a");
    EXPECT_FALSE(requests->cancel(0));
    EXPECT_FALSE(requests->cancel(a + 1));
    give_up();
}

TEST_F(cpp_async, that_ended_is_gone_when_it_is_called) {
    ticket own = 0;
    own = send_then([&](const auto &) {
        EXPECT_FALSE(requests->cancel(own));
        EXPECT_EQ(requests->under_way(), 1U);
        ended.push_back("a");
    });
    send("b");
    will_receive(0x7001, {1});
    will_fail(ETIMEDOUT);
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("a"));
    give_up();
}

TEST_F(cpp_async, that_another_one_cancels_is_not_called) {
    ticket other = 0;
    send_then([&](const auto &) { EXPECT_TRUE(requests->cancel(other)); });
    other = send("b");
    send("c");
    transport.will_receive_answer_to(0x7001, full_answer({1}));
    will_drop(3);
    transport.will_receive_answer_to(0x7002, full_answer({2}));
    will_drop(1);
    will_receive(0x7003, {3});
    EXPECT_EQ(requests->process(), 2U);
    EXPECT_THAT(take_ended(), ElementsAre("c: 0x3"));
}

}  // namespace
