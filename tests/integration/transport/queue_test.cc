// SPDX-License-Identifier: Apache-2.0
// Queues that are full.
#include <atomic>

#include "raw_peer.h"
#include "test_service.h"

namespace transport_test {

namespace {

// Sends until the queue is full; returns the tokens.
std::vector<uint32_t> fill(mts_handle_t handle, uint32_t opcode, const std::string &payload) {
    std::vector<uint32_t> tokens;
    while (const uint32_t token = send_request(handle, opcode, payload)) tokens.push_back(token);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EAGAIN));
    return tokens;
}

TEST_F(transport, send_to_a_service_that_does_not_read_fails_when_its_queue_is_full) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    EXPECT_GT(fill(handle, echo, "x").size(), 20u);
    const raw_socket connection = service.accept();
    for (int i = 0; i < 10; ++i) EXPECT_GT(connection.receive().size(), 0u);
    EXPECT_NE(send_request(handle, echo, "there is room again"), 0u);
}

class transport_requests : public transport, public testing::WithParamInterface<int> {};

// A large request takes two packets: however many small ones fill the queue before, it holds no half of one.
TEST_P(transport_requests, that_are_large_fill_a_queue_with_whole_ones) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    for (int i = 0; i < GetParam(); ++i) ASSERT_NE(send_request(handle, echo), 0u);
    const std::string large = pattern(300'000);
    const std::vector<uint32_t> tokens = fill(handle, echo, large);
    EXPECT_GT(tokens.size(), 20u);
    const raw_socket connection = service.accept();
    for (int i = 0; i < GetParam(); ++i) EXPECT_EQ(header_of(connection.receive()).place, 0);
    for (const uint32_t token : tokens) {
        const raw_header announcement = header_of(connection.receive());
        EXPECT_EQ(announcement.token, token);
        EXPECT_EQ(announcement.payload_size, large.size());
        const int memory = connection.receive_descriptor();
        EXPECT_EQ(lseek(memory, 0, SEEK_END), static_cast<off_t>(large.size()));
        close(memory);
    }
    EXPECT_NE(send_request(handle, echo, "there is room again"), 0u);
    EXPECT_EQ(connection.receive().substr(0, 5), "there");
}

INSTANTIATE_TEST_SUITE_P(behind_small_ones, transport_requests, testing::Values(0, 1));

TEST_F(transport, client_that_does_not_receive_is_held_up_and_loses_nothing) {
    const service_thread service;
    const open_handle slow;
    const std::string payload = pattern(3000);
    const std::vector<uint32_t> tokens = fill(slow, echo, payload);
    EXPECT_GT(tokens.size(), 20u);

    const open_handle other;
    EXPECT_EQ(exchange(other, echo, "served meanwhile"), "served meanwhile");

    for (const uint32_t token : tokens) EXPECT_TRUE(receive_answer(slow, token) == payload);
    EXPECT_EQ(exchange(slow, echo, "recovered"), "recovered");
}

class transport_answers : public transport, public testing::WithParamInterface<opcode> {};

TEST_P(transport_answers, that_find_no_room_wait_for_it_in_their_order) {
    const service_thread service;
    const open_handle slow;
    constexpr uint32_t large = 100 * 1024;  // a socket has room for two
    std::vector<uint32_t> tokens;
    for (uint32_t i = 0; i < 20; ++i) tokens.push_back(send_request(slow, GetParam(), word(large + i)));

    // The loop serves each client once a round, so by now the service has tried to send more than there is room for.
    const open_handle other;
    for (int i = 0; i < 20; ++i) EXPECT_EQ(exchange(other, echo, "served meanwhile"), "served meanwhile");

    for (uint32_t i = 0; i < 20; ++i) EXPECT_TRUE(receive_answer(slow, tokens[i]) == pattern(large + i));
    EXPECT_EQ(exchange(slow, echo, "recovered"), "recovered");
}

INSTANTIATE_TEST_SUITE_P(built_and_lent, transport_answers, testing::Values(answer_size, lend_size));

// Counts the requests, and answers with a payload that travels in a memory file, or none.
void serve_large(void *calls, const mts_request_t *request, mts_reply_t *reply) {
    ++*static_cast<std::atomic<int> *>(calls);
    mts_reply_payload(reply, request->opcode == answer_size ? 1024 * 1024 : 0);
}

// The loop serves each client that has a request in each of its rounds.
TEST_F(transport, client_that_does_not_receive_gets_few_memory_files) {
    std::atomic<int> calls = 0;
    const test_server server(std::vector<uint32_t>{});
    ASSERT_EQ(mts_server_add_service(server.get(), node, sap, serve_large, &calls), 0);
    std::thread serving([&] { EXPECT_EQ(mts_server_run(server.get()), 0); });
    constexpr int requests = 100;
    const open_handle idle;
    std::vector<uint32_t> tokens;
    for (int i = 0; i < requests; ++i) tokens.push_back(send_request(idle, answer_size, ""));
    const open_handle busy;
    for (int round = 0; round < 2 * requests; ++round) EXPECT_EQ(exchange(busy, answer_nothing, ""), "");
    EXPECT_LT(calls - 2 * requests, 20);
    const uint32_t small = send_request(idle, answer_nothing, "");
    for (const uint32_t token : tokens) EXPECT_EQ(receive_answer(idle, token).size(), 1024u * 1024);
    EXPECT_EQ(receive_answer(idle, small), "");
    mts_server_stop(server.get());
    serving.join();
}

TEST_F(transport, kept_answers_have_a_bound_and_the_oldest_go_first) {
    const service_thread service;
    const open_handle handle;
    std::vector<uint32_t> tokens;
    for (int batch = 0; batch < 11; ++batch) {
        for (int i = 0; i < 100; ++i) tokens.push_back(send_request(handle, echo, std::to_string(tokens.size())));
        EXPECT_EQ(receive_answer(handle, tokens.back()), std::to_string(tokens.size() - 1));
    }
    EXPECT_EQ(receive_error(handle, tokens.front(), 0), static_cast<uint32_t>(ETIMEDOUT));
    EXPECT_EQ(receive_answer(handle, tokens[200], 0), "200");
}

TEST_F(transport, vanished_client_with_an_unsent_answer_is_forgotten) {
    const service_thread service;
    {
        const open_handle slow;
        fill(slow, echo, pattern(3000));
    }
    const open_handle other;
    EXPECT_EQ(exchange(other, echo, "served"), "served");
}

}  // namespace

}  // namespace transport_test
