// SPDX-License-Identifier: Apache-2.0
// Requests that do not wait and are not answered: deadlines, and services that end.
#include <climits>

#include "async_requests_fixture.h"

namespace {

using testing::ElementsAre;
using unit::clock_type;
using unit::cpp_async;
using unit::dropped_message;
using unit::full_answer;
using unit::handle;
using unit::long_limit;
using unit::one_range;
using unit::received_answer_to;
using unit::received_any;
using unit::ticket;
using namespace std::chrono_literals;

// ---- deadlines

TEST_F(cpp_async, has_no_deadline_when_there_is_none) {
    EXPECT_EQ(requests->poll_timeout(), -1);
    will_fail(ETIMEDOUT);
    EXPECT_EQ(requests->process(), 0U);
}

TEST_F(cpp_async, has_the_first_deadline_of_all) {
    send("late", 50s);
    EXPECT_GT(requests->poll_timeout(), 40'000);
    EXPECT_LE(requests->poll_timeout(), 50'000);
    const ticket early = send("early", 20s);
    send("later", 90s);
    EXPECT_GT(requests->poll_timeout(), 10'000);
    EXPECT_LE(requests->poll_timeout(), 20'000);
    transport.will_drop();
    requests->cancel(early);
    EXPECT_GT(requests->poll_timeout(), 40'000);
    give_up();
}

// A loop would turn round and round for the last part of a millisecond.
TEST_F(cpp_async, is_not_due_before_its_deadline) {
    const auto until = clock_type::now() + 3ms;
    send("a", 3ms);
    while (requests->poll_timeout() != 0) {
    }
    EXPECT_GE(clock_type::now(), until);
    give_up();
}

TEST_F(cpp_async, is_due_when_its_deadline_has_passed) {
    send("a", 0s);
    EXPECT_EQ(requests->poll_timeout(), 0);
    send("b", -1h);
    EXPECT_EQ(requests->poll_timeout(), 0);
    give_up();
}

TEST_F(cpp_async, waits_as_long_as_poll_can_and_without_limit) {
    send("a", 24h * 365);
    EXPECT_EQ(requests->poll_timeout(), INT_MAX);
    give_up();
    requests.emplace(handle);
    send("b", clock_type::duration::max());
    EXPECT_EQ(requests->poll_timeout(), INT_MAX);
    send("c", 50s);
    EXPECT_LE(requests->poll_timeout(), 50'000);
    will_fail(ETIMEDOUT);
    EXPECT_EQ(requests->process(), 0U);
    give_up();
}

TEST_F(cpp_async, ends_at_its_deadline_and_has_its_late_answer_dropped) {
    send("a", 0s);
    send("b");
    will_fail(ETIMEDOUT);
    will_fail(ETIMEDOUT);
    transport.will_drop();
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("a: Connection timed out"));
    EXPECT_EQ(requests->under_way(), 1U);
    transport.will_receive_answer_to(0x7001, full_answer({1}));
    transport.will_drop();
    EXPECT_EQ(requests->process(), 0U);
    give_up();
}

TEST_F(cpp_async, ends_with_an_answer_that_lies_there_at_its_deadline) {
    send("a", 0s);
    transport.will_receive_answer_to(0x6fff, full_answer({9}));
    transport.will_drop();
    will_receive(0x7001, {1});
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("a: 0x1"));
    EXPECT_THAT(transported(), testing::Contains(received_answer_to(0x7001)));
}

// A blocking call has met the end of the service before.
TEST_F(cpp_async, that_was_lost_unseen_says_so_at_its_deadline) {
    send("a", 0s);
    will_fail(ETIMEDOUT);
    will_fail(ECONNRESET);
    transport.will_drop();
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("a: Connection reset by peer"));
}

TEST_F(cpp_async, at_its_deadline_that_sends_a_request_without_time_leaves_it_for_later) {
    send_then([&](const auto &) { send("b", 0s); }, 0s);
    will_fail(ETIMEDOUT);
    will_fail(ETIMEDOUT);
    transport.will_drop();
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_EQ(requests->under_way(), 1U);
    EXPECT_EQ(requests->poll_timeout(), 0);
    give_up();
}

TEST_F(cpp_async, at_its_deadline_that_cancels_others_ends_alone) {
    ticket other = 0;
    send_then([&](const auto &) { EXPECT_TRUE(requests->cancel(other)); }, -1s);
    other = send("b", 0s);
    will_fail(ETIMEDOUT);
    will_fail(ETIMEDOUT);
    will_drop(2);
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_EQ(requests->under_way(), 0U);
}

// ---- services that end

TEST_F(cpp_async, that_is_lost_ends_and_others_go_on) {
    for (const char *const name : {"lost", "silent", "answered", "lost too"}) send(name);
    transported();
    will_fail(ECONNRESET);
    will_fail(ECONNRESET);
    transport.will_drop();
    will_fail(ETIMEDOUT);
    will_receive(0x7003, {3});
    will_fail(ECONNRESET);
    transport.will_drop();
    EXPECT_EQ(requests->process(), 3U);
    EXPECT_THAT(take_ended(),
                ElementsAre("lost: Connection reset by peer", "answered: 0x3", "lost too: Connection reset by peer"));
    EXPECT_THAT(transported(),
                ElementsAre(received_any, received_answer_to(0x7001), dropped_message(0x7001),
                            received_answer_to(0x7002), received_answer_to(0x7003), dropped_message(0x7003),
                            dropped_message(0x7005), received_answer_to(0x7004), dropped_message(0x7004)));
    EXPECT_EQ(requests->under_way(), 1U);
    give_up();
}

TEST_F(cpp_async, that_is_lost_may_be_sent_again_by_what_is_called) {
    send_then([&](const auto &told) {
        EXPECT_EQ(told.why().value(), uint32_t{ECONNRESET});
        EXPECT_TRUE(requests->get_port_info_range(one_range, long_limit, as("again")));
    });
    will_fail(ECONNRESET);
    will_fail(ECONNRESET);
    transport.will_drop();
    transport.will_send();
    EXPECT_EQ(requests->process(), 1U);
    will_receive(0x7002, {1});
    EXPECT_EQ(requests->process(), 1U);
    EXPECT_THAT(take_ended(), ElementsAre("again: 0x1"));
}

TEST_F(cpp_async, that_is_lost_may_take_others_with_it) {
    ticket other = 0;
    send_then([&](const auto &) { EXPECT_TRUE(requests->cancel(other)); });
    other = send("b");
    will_fail(ECONNRESET);
    will_fail(ECONNRESET);
    will_drop(2);
    EXPECT_EQ(requests->process(), 1U);
}

TEST_F(cpp_async, on_a_handle_that_is_closed_ends_with_that) {
    send("a");
    send("b");
    for (int i = 0; i < 2; ++i) {
        will_fail(EBADF);
        if (i == 0) will_fail(EBADF);
        transport.will_drop();
    }
    EXPECT_EQ(requests->process(), 2U);
    EXPECT_THAT(take_ended(), ElementsAre("a: Bad file descriptor", "b: Bad file descriptor"));
}

}  // namespace
