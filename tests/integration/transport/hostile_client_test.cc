// SPDX-License-Identifier: Apache-2.0
// What a client may send without harm to the service.
#include "raw_peer.h"
#include "test_service.h"

namespace transport_test {

namespace {

// Asks for a look at a page that travels in a memory file.
raw_header request_of_a_page() {
    raw_header request;
    request.opcode = report_tail;
    request.place = 1;
    request.payload_size = 4096;
    return request;
}

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
    send_in_memory_file(client, request_of_a_page(), memory.get());
    EXPECT_EQ(client.receive().substr(0, 1), "\1");
}

TEST_F(transport, large_answer_is_announced_and_its_descriptor_follows) {
    const service_thread service;
    const raw_socket client = raw_connect(file("fe000000-43"));
    constexpr uint32_t large = 1024 * 1024;
    raw_header request;
    request.opcode = answer_size;
    request.payload_size = sizeof large;
    client.send(bytes_of(request, word(large)));
    raw_header announcement = request;
    announcement.kind = 2;
    announcement.place = 1;
    announcement.payload_size = large;
    EXPECT_EQ(client.receive(), bytes_of(announcement));
    const int memory = client.receive_descriptor();
    std::string payload(large, '\0');
    EXPECT_EQ(pread(memory, payload.data(), large, 0), ssize_t{large});
    EXPECT_TRUE(payload == pattern(large));
    EXPECT_EQ(fcntl(memory, F_GET_SEALS) & all_seals, all_seals);
    close(memory);
}

TEST_F(transport, descriptor_that_nothing_announced_is_dropped_and_its_frame_served) {
    const service_thread service;
    const raw_socket client = raw_connect(file("fe000000-43"));
    const raw_memory_file memory(4096, all_seals);
    raw_header request;
    request.payload_size = 4;
    client.send(bytes_of(request, "took"));  // by its answer, the service has taken the connection
    EXPECT_EQ(client.receive().substr(0, 4), "took");
    const size_t descriptors = count_open_descriptors();
    client.send(bytes_of(request, "1234"), {memory.get(), memory.get()});
    EXPECT_EQ(client.receive().substr(0, 4), "1234");
    EXPECT_EQ(count_open_descriptors(), descriptors);
}

// Each exchange of the other client is a round of the service's loop at least.
TEST_F(transport, announced_memory_file_is_not_waited_for_by_the_service) {
    const service_thread service;
    const raw_socket client = raw_connect(file("fe000000-43"));
    const raw_memory_file memory(4096, all_seals);
    client.send(bytes_of(request_of_a_page()));
    const open_handle other;
    for (int i = 0; i < 5; ++i) EXPECT_EQ(exchange(other, echo, "served meanwhile"), "served meanwhile");
    client.send(descriptor_packet, {memory.get()});
    EXPECT_EQ(client.receive().substr(0, 1), "\1");
    send_in_memory_file(client, request_of_a_page(), memory.get());
    EXPECT_EQ(client.receive().substr(0, 1), "\1") << "the next one";
}

TEST_F(transport, client_that_vanishes_behind_an_announcement_harms_nobody) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "before"), "before");
    const size_t descriptors = count_open_descriptors();
    raw_connect(file("fe000000-43")).send(bytes_of(request_of_a_page()));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(exchange(handle, echo, "after"), "after");
    EXPECT_EQ(count_open_descriptors(), descriptors);
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
