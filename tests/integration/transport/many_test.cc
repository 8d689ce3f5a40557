// SPDX-License-Identifier: Apache-2.0
// Many clients, and many services on one handle.
#include "test_service.h"

namespace transport_test {

namespace {

// What client `client` says in its exchange `turn`; lengths differ too.
std::string own_payload(int client, int turn) {
    return std::string(static_cast<size_t>(client * 7 + turn), 'x') + std::to_string(client) + "/" +
           std::to_string(turn);
}

void run_clients(int count, int turns) {
    std::vector<std::thread> clients;
    for (int client = 0; client < count; ++client) {
        clients.emplace_back([client, turns] {
            const open_handle handle;
            for (int turn = 0; turn < turns; ++turn)
                EXPECT_EQ(exchange(handle, echo, own_payload(client, turn)), own_payload(client, turn));
        });
    }
    for (std::thread &client : clients) client.join();
}

TEST_F(transport, two_threads_with_a_handle_each) {
    const service_thread service;
    run_clients(2, 500);
}

TEST_F(transport, each_of_64_clients_gets_its_own_answers) {
    const service_thread service;
    run_clients(64, 25);
}

TEST_F(transport, handles_open_and_close_on_many_threads_at_once) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([] {
            for (int turn = 0; turn < 200; ++turn) {
                const mts_handle_t handle = mts_dev_open();
                EXPECT_EQ(mts_errno_get(handle), 0u);
                EXPECT_EQ(mts_dev_close(handle), 0);
                EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EBADF));
            }
        });
    }
    for (std::thread &thread : threads) thread.join();
}

TEST_F(transport, one_handle_interleaves_several_services) {
    const service_thread service({43, 175, 179});
    const open_handle handle;
    const uint32_t a = send_request(handle, report_sap, {}, 43);
    const uint32_t b = send_request(handle, report_sap, {}, 175);
    const uint32_t c = send_request(handle, report_sap, {}, 179);
    const uint32_t d = send_request(handle, report_sap, {}, 43);
    EXPECT_EQ(receive_answer(handle, c), word(179));
    EXPECT_EQ(receive_answer(handle, d), word(43));
    EXPECT_EQ(receive_answer(handle, b), word(175));
    EXPECT_EQ(receive_answer(handle, a), word(43));
}

TEST_F(transport, answers_are_kept_for_their_own_receive) {
    const service_thread service;
    const open_handle handle;
    std::vector<uint32_t> tokens;
    for (int i = 0; i < 100; ++i) tokens.push_back(send_request(handle, echo, std::to_string(i)));
    for (int i = 99; i >= 0; --i) EXPECT_EQ(receive_answer(handle, tokens[static_cast<size_t>(i)]), std::to_string(i));
}

TEST_F(transport, kept_answer_needs_no_wait) {
    const service_thread service;
    const open_handle handle;
    const uint32_t first = send_request(handle, echo, "first");
    const uint32_t second = send_request(handle, echo, "second");
    EXPECT_EQ(receive_answer(handle, second), "second");
    EXPECT_EQ(receive_answer(handle, first, 0), "first");
    EXPECT_EQ(receive_error(handle, first, 0), static_cast<uint32_t>(ETIMEDOUT));
}

TEST_F(transport, kept_answers_are_released_with_their_handle) {
    const service_thread service;
    const open_handle handle;
    ASSERT_NE(send_request(handle, echo, pattern(100 * 1024)), 0u);
    EXPECT_EQ(exchange(handle, echo, "second"), "second");
}

TEST_F(transport, receive_of_any_takes_kept_messages_first_then_those_of_each_service) {
    const service_thread service({43, 175});
    const open_handle handle;
    ASSERT_NE(send_request(handle, echo, "kept"), 0u);
    EXPECT_EQ(exchange(handle, echo, "taken"), "taken");
    ASSERT_NE(send_request(handle, echo, "other", 175), 0u);
    const mts_recv_options_t any = {{0, 0, 10}};
    for (const char *expected : {"kept", "other"}) {
        mts_msg_t answer;
        ASSERT_NE(mts_recv(handle, &answer, &any), -1);
        EXPECT_EQ(std::string(static_cast<char *>(mts_payload_get(&answer)), mts_payload_size(&answer)), expected);
        EXPECT_EQ(mts_drop(handle, &answer), 0);
    }
}

}  // namespace

}  // namespace transport_test
