// SPDX-License-Identifier: Apache-2.0
// What a service may send without harm to its clients.
#include <chrono>

#include "platform/cmi.h"
#include "raw_peer.h"
#include "test_service.h"

namespace transport_test {

namespace {

class hostile_service : public transport, public testing::WithParamInterface<hostile_frame> {};

raw_header answer_header(uint32_t token) {
    raw_header header;
    header.kind = 2;
    header.token = token;
    return header;
}

TEST_P(hostile_service, fails_the_receive_as_a_protocol_error) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const size_t descriptors = count_open_descriptors();
    const uint32_t token = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    send_hostile(connection, GetParam(), answer_header(token));
    EXPECT_EQ(receive_error(handle, token), static_cast<uint32_t>(EPROTO));
    EXPECT_EQ(count_open_descriptors(), descriptors + 1) << "only the raw connection may be left";
}

INSTANTIATE_TEST_SUITE_P(sends, hostile_service, testing::ValuesIn(hostile_frames), name_of);

// Whose payload is in a memory file.
raw_header announcement(uint32_t token) {
    raw_header header = answer_header(token);
    header.place = 1;
    header.payload_size = 4096;
    return header;
}

TEST_F(transport, descriptor_that_nothing_announced_is_dropped_and_its_answer_good) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    const raw_memory_file memory(4096, all_seals);
    const size_t descriptors = count_open_descriptors();
    raw_header answer = answer_header(token);
    answer.payload_size = 1;
    connection.send(bytes_of(answer, "x"), {memory.get(), memory.get()});
    EXPECT_EQ(receive_answer(handle, token), "x");
    EXPECT_EQ(count_open_descriptors(), descriptors);
}

TEST_F(transport, wait_for_an_announced_memory_file_ends_after_its_seconds) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    connection.send(bytes_of(announcement(token)));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(receive_error(handle, token, 1), static_cast<uint32_t>(ETIMEDOUT));
    const auto spent = std::chrono::steady_clock::now() - start;
    EXPECT_GE(spent, std::chrono::milliseconds(1000));
    EXPECT_LT(spent, std::chrono::milliseconds(1900));
    EXPECT_EQ(receive_error(handle, token, 0), static_cast<uint32_t>(ETIMEDOUT));
    const raw_memory_file memory(4096, all_seals);
    connection.send(descriptor_packet, {memory.get()});
    EXPECT_EQ(receive_answer(handle, token, 0), std::string(4096, '\0'));
}

TEST_F(transport, wait_for_any_message_ends_after_its_seconds_when_only_an_announcement_came) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    connection.send(bytes_of(announcement(token)));
    mts_msg_t answer;
    const mts_recv_options_t any = {{0, 0, 1}};
    EXPECT_EQ(mts_recv(handle, &answer, &any), -1);
    EXPECT_EQ(mts_errno_get(handle), uint32_t{ETIMEDOUT});
}

TEST_F(transport, announcement_is_forgotten_with_its_connection) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t first = send_request(handle, echo, "x");
    service.accept().send(bytes_of(announcement(first)));
    EXPECT_EQ(receive_error(handle, first), static_cast<uint32_t>(ECONNRESET));
    const uint32_t second = send_request(handle, echo, "x");
    service.accept().send(bytes_of(answer_header(second)));
    EXPECT_EQ(receive_answer(handle, second), "");
}

TEST_F(transport, answer_to_what_another_service_was_asked_is_refused) {
    const raw_service asked(file("fe000000-43"));
    const raw_service liar(file("fe000000-44"));
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x", 43);
    const uint32_t bait = send_request(handle, echo, "x", 44);
    liar.accept().send(bytes_of(answer_header(token)));
    EXPECT_EQ(receive_error(handle, bait), static_cast<uint32_t>(EPROTO));
    asked.accept().send(bytes_of(answer_header(token)));
    EXPECT_EQ(receive_answer(handle, token), "");
}

TEST_F(transport, more_answers_than_requests_are_refused) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    connection.send(bytes_of(answer_header(token)));
    connection.send(bytes_of(answer_header(token)));
    EXPECT_EQ(receive_answer(handle, token), "");
    EXPECT_EQ(receive_error(handle, token), static_cast<uint32_t>(EPROTO));
}

TEST_F(transport, answer_that_comes_twice_does_not_count_for_the_next) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t first = send_request(handle, echo, "x");
    const raw_socket connection = service.accept();
    connection.send(bytes_of(answer_header(first)));
    connection.send(bytes_of(answer_header(first)));
    EXPECT_EQ(receive_answer(handle, first), "");
    const uint32_t second = send_request(handle, echo, "x");
    raw_header answer = answer_header(second);
    answer.payload_size = 1;
    connection.send(bytes_of(answer, "x"));
    EXPECT_EQ(receive_answer(handle, second), "x");
}

TEST_F(transport, client_connects_anew_after_a_protocol_error) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    const uint32_t first = send_request(handle, echo, "x");
    service.accept().send("rubbish");
    EXPECT_EQ(receive_error(handle, first), static_cast<uint32_t>(EPROTO));
    const uint32_t second = send_request(handle, echo, "x");
    service.accept().send(bytes_of(answer_header(second)));
    EXPECT_EQ(receive_answer(handle, second), "");
}

TEST_F(transport, message_answer_does_not_answer_a_cmi_request) {
    const raw_service service(file("fe000000-43"));
    const open_handle handle;
    std::thread serving([&service] {
        const raw_socket connection = service.accept();
        connection.send(bytes_of(answer_header(header_of(connection.receive()).token)));
    });
    void *response = nullptr;
    uint32_t length = 0;
    EXPECT_EQ(cmi_req_resp(echo, 1, nullptr, &response, &length, 0, 0, sap, handle, 10),
              static_cast<uint32_t>(ECONNRESET));
    serving.join();
}

}  // namespace

}  // namespace transport_test
