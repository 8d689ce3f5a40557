// SPDX-License-Identifier: Apache-2.0
// How waits end.
#include <signal.h>
#include <sys/time.h>

#include <chrono>

#include "test_service.h"

namespace transport_test {

namespace {

using std::chrono::milliseconds;

// How long `operation` takes.
template <typename operation_t>
milliseconds time_of(operation_t operation) {
    const auto start = std::chrono::steady_clock::now();
    operation();
    return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
}

TEST_F(transport, wait_without_an_answer_ends_after_its_seconds) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, stay_silent);
    const milliseconds spent = time_of([&] { EXPECT_EQ(receive_error(handle, token, 1), uint32_t{ETIMEDOUT}); });
    EXPECT_GE(spent, milliseconds(1000));
    EXPECT_LT(spent, milliseconds(5000));
}

TEST_F(transport, wait_of_zero_seconds_ends_at_once) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, stay_silent);
    EXPECT_LT(time_of([&] { EXPECT_EQ(receive_error(handle, token, 0), uint32_t{ETIMEDOUT}); }), milliseconds(900));
}

TEST_F(transport, answers_to_others_do_not_prolong_a_wait) {
    const service_thread service;
    const open_handle handle;
    const uint32_t silent = send_request(handle, stay_silent);
    const uint32_t other = send_request(handle, echo, "other");
    const milliseconds spent = time_of([&] { EXPECT_EQ(receive_error(handle, silent, 1), uint32_t{ETIMEDOUT}); });
    EXPECT_GE(spent, milliseconds(1000));
    EXPECT_LT(spent, milliseconds(1900));
    EXPECT_EQ(receive_answer(handle, other, 0), "other");
}

TEST_F(transport, wait_for_any_message_ends_after_its_seconds) {
    const service_thread service;
    const open_handle handle;
    ASSERT_NE(send_request(handle, stay_silent), 0u);
    mts_msg_t answer;
    const mts_recv_options_t any = {{0, 0, 1}};
    EXPECT_GE(time_of([&] { EXPECT_EQ(mts_recv(handle, &answer, &any), -1); }), milliseconds(1000));
    EXPECT_EQ(mts_errno_get(handle), uint32_t{ETIMEDOUT});
}

TEST_F(transport, token_of_no_request_is_invalid) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, stay_silent);
    EXPECT_EQ(receive_error(handle, 0), uint32_t{EINVAL});
    EXPECT_EQ(receive_error(handle, token + 1), uint32_t{EINVAL});
    EXPECT_EQ(receive_error(handle, token + (1u << 24)), uint32_t{EINVAL});
}

TEST_F(transport, receive_option_that_means_nothing_is_invalid) {
    const open_handle handle;
    mts_msg_t answer;
    const mts_recv_options_t unknown = {{2}};
    EXPECT_EQ(mts_recv(handle, &answer, &unknown), -1);
    EXPECT_EQ(mts_errno_get(handle), uint32_t{EINVAL});
    EXPECT_EQ(mts_recv(handle, &answer, nullptr), -1);
}

// Signals the calling thread every 20 ms as long as it lives.
class alarm_clock {
  public:
    explicit alarm_clock(int handler_flags) {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        action.sa_flags = handler_flags;
        sigaction(SIGALRM, &action, &before_);
        ring_every(20000);
    }
    alarm_clock(const alarm_clock &) = delete;
    alarm_clock &operator=(const alarm_clock &) = delete;
    ~alarm_clock() {
        ring_every(0);
        sigaction(SIGALRM, &before_, nullptr);
    }

  private:
    static void ring_every(suseconds_t microseconds) {
        const itimerval interval = {{0, microseconds}, {0, microseconds}};
        setitimer(ITIMER_REAL, &interval, nullptr);
    }

    struct sigaction before_ {};
};

// The service runs in another process, so that the signals reach the waiting thread.
class transport_signals : public transport, public testing::WithParamInterface<int> {};

TEST_P(transport_signals, signal_interrupts_the_wait_for_an_answer) {
    const service_process service;
    const open_handle handle;
    const uint32_t token = send_request(handle, stay_silent);
    const alarm_clock alarm(GetParam());
    EXPECT_EQ(receive_error(handle, token), uint32_t{EINTR});
}

TEST_P(transport_signals, signal_interrupts_the_wait_after_another_answer) {
    const service_process service;
    const open_handle handle;
    const uint32_t token = send_request(handle, stay_silent);
    ASSERT_NE(send_request(handle, echo, "other"), 0u);
    const alarm_clock alarm(GetParam());
    EXPECT_EQ(receive_error(handle, token), uint32_t{EINTR});
}

TEST_P(transport_signals, signal_interrupts_the_wait_for_any_message) {
    const service_process service;
    const open_handle handle;
    ASSERT_NE(send_request(handle, stay_silent), 0u);
    const alarm_clock alarm(GetParam());
    mts_msg_t answer;
    const mts_recv_options_t any = {{0, 0, 10}};
    EXPECT_EQ(mts_recv(handle, &answer, &any), -1);
    EXPECT_EQ(mts_errno_get(handle), uint32_t{EINTR});
}

INSTANTIATE_TEST_SUITE_P(with_and_without_restart, transport_signals, testing::Values(0, SA_RESTART));

}  // namespace

}  // namespace transport_test
