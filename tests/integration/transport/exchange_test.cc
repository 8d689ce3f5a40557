// SPDX-License-Identifier: Apache-2.0
// One request and its answer.
#include <fcntl.h>

#include <cstring>
#include <filesystem>
#include <set>

#include "platform/cmi.h"
#include "test_service.h"

namespace transport_test {

namespace {

constexpr uint32_t mebibyte = 1024 * 1024;

std::set<int> open_descriptors() {
    std::set<int> descriptors;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        descriptors.insert(std::stoi(entry.path().filename()));
    return descriptors;
}

TEST_F(transport, answers_from_another_process) {
    const service_process service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "over there"), "over there");
}

TEST_F(transport, request_record_tells_its_opcode_and_is_no_response) {
    const service_thread service;
    const open_handle handle;
    mts_msg_t request;
    ASSERT_EQ(mts_send(handle, node, sap, echo, "abc", 3, &request, 0, 0), 0);
    EXPECT_EQ(mts_opc_get(&request), echo);
    EXPECT_EQ(mts_is_response(&request), 0);
    EXPECT_EQ(mts_payload_get(&request), nullptr);
    EXPECT_EQ(mts_payload_size(&request), 0u);
    EXPECT_NE(mts_rr_token_get(&request), 0u);
    EXPECT_NE(mts_msg_id_get(&request), 0u);
    EXPECT_EQ(mts_drop(handle, &request), 0);
}

TEST_F(transport, answer_carries_opcode_token_and_payload) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "abc");
    mts_msg_t answer;
    const mts_recv_options_t options = answer_to(token);
    ASSERT_NE(mts_recv(handle, &answer, &options), -1);
    EXPECT_NE(mts_is_response(&answer), 0);
    EXPECT_EQ(mts_opc_get(&answer), echo);
    EXPECT_EQ(mts_rr_token_get(&answer), token);
    EXPECT_NE(mts_msg_id_get(&answer), 0u);
    ASSERT_EQ(mts_payload_size(&answer), 3u);
    EXPECT_EQ(std::memcmp(mts_payload_get(&answer), "abc", 3), 0);
    EXPECT_EQ(mts_drop(handle, &answer), 0);
}

TEST_F(transport, service_sees_where_and_what_was_asked) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, report_request, "12345"),
              word(node) + word(sap) + word(report_request) + word(0) + word(0) + word(5));
}

TEST_F(transport, answer_without_payload_gives_null) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, answer_nothing, "x");
    mts_msg_t answer;
    const mts_recv_options_t options = answer_to(token);
    ASSERT_NE(mts_recv(handle, &answer, &options), -1);
    EXPECT_EQ(mts_payload_get(&answer), nullptr);
    EXPECT_EQ(mts_payload_size(&answer), 0u);
    EXPECT_EQ(mts_drop(handle, &answer), 0);
}

TEST_F(transport, failed_message_is_answered_without_payload) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, refuse, "x"), "");
}

// Around the sizes where a payload is copied, is handed over in its buffer, and no longer fits a packet.
class transport_sizes : public transport, public testing::WithParamInterface<uint32_t> {};

TEST_P(transport_sizes, payload_arrives_whole_both_ways) {
    const service_thread service;
    const open_handle handle;
    EXPECT_TRUE(exchange(handle, echo, pattern(GetParam())) == pattern(GetParam()));
}

TEST_P(transport_sizes, lent_payload_arrives_whole) {
    const service_thread service;
    const open_handle handle;
    EXPECT_TRUE(exchange(handle, lend_size, word(GetParam())) == pattern(GetParam()));
}

TEST_P(transport_sizes, zeroed_bytes_follow_a_request) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, std::string(200 * 1024, '\xff')).size(), 200u * 1024);  // fouls the buffers
    EXPECT_EQ(exchange(handle, report_tail, std::string(GetParam(), '\xff')), "\1");
}

TEST_P(transport_sizes, zeroed_bytes_follow_an_answer) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, std::string(200 * 1024, '\xff')).size(), 200u * 1024);
    const uint32_t token = send_request(handle, echo, std::string(GetParam(), '\xff'));
    mts_msg_t answer;
    const mts_recv_options_t options = answer_to(token);
    ASSERT_NE(mts_recv(handle, &answer, &options), -1);
    EXPECT_TRUE(has_zeroed_tail(mts_payload_get(&answer), mts_payload_size(&answer)));
    EXPECT_EQ(mts_drop(handle, &answer), 0);
}

INSTANTIATE_TEST_SUITE_P(around_limits, transport_sizes,
                         testing::Values(1, 23, 197, 1024, 1025, 16 * 1024, 16 * 1024 + 1, 200 * 1024, 212932, 212933,
                                         8 * mebibyte, MTS_MAX_PAYLOAD));

TEST_F(transport, refuses_a_payload_over_the_limit) {
    const service_thread service;
    const open_handle handle;
    const std::string payload(MTS_MAX_PAYLOAD + 1, '\0');
    EXPECT_EQ(send_request(handle, echo, payload), 0u);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EMSGSIZE));
    EXPECT_EQ(exchange(handle, echo, "still there"), "still there");
}

TEST_F(transport, reply_over_the_limit_is_refused_to_the_service) {
    const service_thread service;
    const open_handle handle;
    mts_server_t *server = mts_server_create();
    const auto overdo = [](void *, const mts_request_t *, mts_reply_t *reply) {
        const bool refused = mts_reply_payload(reply, MTS_MAX_PAYLOAD + 1) == nullptr;
        *static_cast<char *>(mts_reply_payload(reply, 1)) = refused ? 'r' : 'a';
    };
    ASSERT_EQ(mts_server_add_service(server, node, 44, overdo, nullptr), 0);
    std::thread serving([server] { mts_server_run(server); });
    EXPECT_EQ(exchange(handle, echo, "x", 44), "r");
    mts_server_stop(server);
    serving.join();
    mts_server_destroy(server);
}

TEST_F(transport, lent_payload_over_the_limit_fails_the_answer) {
    const service_thread service;
    const open_handle handle;
    void *response = nullptr;
    uint32_t length = 4;
    const std::string size = word(MTS_MAX_PAYLOAD + 1);
    EXPECT_EQ(cmi_req_resp(lend_size, 2, size.data(), &response, &length, 0, 0, sap, handle, 5),
              static_cast<uint32_t>(EMSGSIZE));
}

TEST_F(transport, absent_payload_with_a_size_is_invalid) {
    const service_thread service;
    const open_handle handle;
    mts_msg_t request;
    EXPECT_EQ(mts_send(handle, node, sap, echo, nullptr, 4, &request, 0, 0), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EINVAL));
}

TEST_F(transport, no_descriptor_stays_open) {
    const size_t before = count_open_descriptors();
    {
        const service_thread service({43, 44});
        const open_handle handle;
        exchange(handle, echo, "small");
        exchange(handle, echo, pattern(8 * mebibyte), 44);
    }
    EXPECT_EQ(count_open_descriptors(), before);
}

TEST_F(transport, no_descriptor_survives_an_exec) {
    const std::set<int> before = open_descriptors();
    const service_thread service;
    const open_handle handle;
    exchange(handle, echo, "connected");
    for (const int descriptor : open_descriptors()) {
        const int flags = fcntl(descriptor, F_GETFD);
        if (before.contains(descriptor) || flags < 0) continue;
        EXPECT_EQ(flags & FD_CLOEXEC, FD_CLOEXEC)
            << std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor));
    }
}

}  // namespace

}  // namespace transport_test
