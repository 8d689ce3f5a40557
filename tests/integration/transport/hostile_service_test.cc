// SPDX-License-Identifier: Apache-2.0
// What a service may send without harm to its clients.
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
        raw_header request;
        connection.receive().copy(reinterpret_cast<char *>(&request), sizeof request);
        connection.send(bytes_of(answer_header(request.token)));
    });
    void *response = nullptr;
    uint32_t length = 0;
    EXPECT_EQ(cmi_req_resp(echo, 1, nullptr, &response, &length, 0, 0, sap, handle, 10),
              static_cast<uint32_t>(ECONNRESET));
    serving.join();
}

}  // namespace

}  // namespace transport_test
