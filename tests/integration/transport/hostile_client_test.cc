// SPDX-License-Identifier: Apache-2.0
// What a client may send without harm to the service.
#include "raw_peer.h"
#include "test_service.h"

namespace transport_test {

namespace {

class hostile_client : public transport, public testing::WithParamInterface<hostile_frame> {};

TEST_P(hostile_client, loses_its_own_connection_only) {
    const service_thread service;
    const open_handle good;
    EXPECT_EQ(exchange(good, echo, "before"), "before");
    const size_t descriptors = count_open_descriptors();
    {
        const raw_socket client = raw_connect(file("fe000000-43"));
        send_hostile(client, GetParam(), raw_header{});
        EXPECT_EQ(client.receive(), "");
    }
    EXPECT_EQ(exchange(good, echo, "after"), "after");
    EXPECT_EQ(count_open_descriptors(), descriptors);
}

INSTANTIATE_TEST_SUITE_P(sends, hostile_client, testing::ValuesIn(hostile_frames), name_of);

TEST_F(transport, frames_have_the_layout_that_the_raw_tests_assume) {
    const service_thread service;
    const raw_socket client = raw_connect(file("fe000000-43"));
    raw_header request;
    request.opcode = echo;
    request.token = 0x01020304;
    request.payload_size = 4;
    client.send(bytes_of(request, "1234"));
    raw_header answer = request;
    answer.kind = 2;
    EXPECT_EQ(client.receive(), bytes_of(answer, "1234"));
}

TEST_F(transport, sealed_memory_file_is_accepted_from_a_raw_client) {
    const service_thread service;
    const raw_socket client = raw_connect(file("fe000000-43"));
    const raw_memory_file memory(4096, all_seals);
    raw_header request;
    request.opcode = report_tail;
    request.place = 1;
    request.payload_size = 4096;
    client.send(bytes_of(request), {memory.get()});
    EXPECT_EQ(client.receive().substr(sizeof(raw_header)), "\1");
}

TEST_F(transport, client_that_vanishes_before_its_answer_harms_nobody) {
    const service_thread service;
    for (int i = 0; i < 50; ++i) {
        const open_handle vanishing;
        ASSERT_NE(send_request(vanishing, answer_size, word(256 * 1024)), 0u);
    }
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "served"), "served");
}

}  // namespace

}  // namespace transport_test
