// SPDX-License-Identifier: Apache-2.0
// Services that come, die and come back.
#include <filesystem>

#include "test_service.h"

namespace transport_test {

namespace {

TEST_F(transport, absent_service_is_unreachable) {
    const open_handle handle;
    EXPECT_EQ(send_request(handle, echo, "x"), 0u);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EHOSTUNREACH));
}

TEST_F(transport, service_that_dies_ends_the_wait_at_once) {
    const service_process service;
    const open_handle handle;
    EXPECT_EQ(receive_error(handle, send_request(handle, die)), static_cast<uint32_t>(ECONNRESET));
}

TEST_F(transport, service_that_dies_ends_the_wait_for_any_message) {
    const service_process service;
    const open_handle handle;
    ASSERT_NE(send_request(handle, die), 0u);
    mts_msg_t answer;
    const mts_recv_options_t any = {{0, 0, 10}};
    EXPECT_EQ(mts_recv(handle, &answer, &any), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(ECONNRESET));
}

TEST_F(transport, killed_service_is_unreachable_and_reached_again_when_it_is_back) {
    service_process first;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "first"), "first");
    first.kill_now();
    EXPECT_EQ(send_request(handle, echo, "nobody"), 0u);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EHOSTUNREACH));
    const service_process second;
    EXPECT_EQ(exchange(handle, echo, "second"), "second");
}

TEST_F(transport, send_reconnects_to_a_service_that_came_back_unnoticed) {
    service_process first;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "first"), "first");
    first.kill_now();
    const service_process second;
    EXPECT_EQ(exchange(handle, echo, "second"), "second");
}

TEST_F(transport, answer_given_before_the_death_is_still_received) {
    service_process first;
    const open_handle handle;
    const uint32_t answered = send_request(handle, echo, "last words");
    const uint32_t unanswered = send_request(handle, die);
    first.wait_for_end();
    EXPECT_EQ(receive_answer(handle, answered), "last words");
    EXPECT_EQ(receive_error(handle, unanswered), static_cast<uint32_t>(ECONNRESET));
}

TEST_F(transport, answer_given_before_the_death_survives_a_reconnect) {
    service_process first;
    const open_handle handle;
    const uint32_t answered = send_request(handle, echo, "last words");
    const uint32_t unanswered = send_request(handle, die);
    first.wait_for_end();
    const service_process second;
    EXPECT_EQ(exchange(handle, echo, "new"), "new");
    EXPECT_EQ(receive_answer(handle, answered), "last words");
    EXPECT_EQ(receive_error(handle, unanswered), static_cast<uint32_t>(ECONNRESET));
}

TEST_F(transport, stale_socket_of_a_dead_service_is_reused) {
    service_process dead;
    dead.kill_now();
    ASSERT_TRUE(std::filesystem::is_socket(file("fe000000-43")));
    const service_thread successor;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "reused"), "reused");
}

TEST_F(transport, second_live_service_is_refused_and_the_first_serves_on) {
    const service_process first;
    mts_server_t *second = mts_server_create();
    const auto serve = [](void *, const mts_request_t *, mts_reply_t *) {};
    errno = 0;
    EXPECT_EQ(mts_server_add_service(second, node, sap, serve, nullptr), -1);
    EXPECT_EQ(errno, EADDRINUSE);
    mts_server_destroy(second);
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "first"), "first");
}

TEST_F(transport, stopped_server_leaves_no_socket) {
    { const service_thread service; }
    EXPECT_FALSE(std::filesystem::exists(file("fe000000-43")));
}

}  // namespace

}  // namespace transport_test
