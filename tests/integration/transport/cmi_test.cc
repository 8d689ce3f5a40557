// SPDX-License-Identifier: Apache-2.0
// cmi_req_resp.
#include "platform/cmi.h"

#include <cstdlib>
#include <memory>

#include "test_service.h"

namespace transport_test {

namespace {

struct free_block {
    void operator()(void *block) const { std::free(block); }
};

struct cmi_result {
    uint32_t status;
    std::unique_ptr<void, free_block> response;
    uint32_t length;

    std::string payload() const { return {static_cast<const char *>(response.get()), length}; }
};

cmi_result ask(mts_handle_t handle, uint32_t opcode, std::string_view request, uint32_t last = 10,
               uint32_t to_sap = sap) {
    void *response = nullptr;
    auto length = static_cast<uint32_t>(request.size());
    const uint32_t status = cmi_req_resp(opcode, 7, request.data(), &response, &length, 0, 0, to_sap, handle, last);
    return {status, std::unique_ptr<void, free_block>(response), length};
}

TEST_F(transport, cmi_gives_the_response_and_its_length) {
    const service_thread service;
    const open_handle handle;
    const cmi_result result = ask(handle, echo, "question", 0);
    EXPECT_EQ(result.status, 0u);
    EXPECT_EQ(result.payload(), "question");
    EXPECT_TRUE(has_zeroed_tail(result.response.get(), result.length));
}

TEST_F(transport, cmi_service_sees_the_kind) {
    const service_thread service;
    const open_handle handle;
    const std::string expected = word(node) + word(sap) + word(report_request) + word(1) + word(7) + word(5);
    EXPECT_EQ(ask(handle, report_request, "12345").payload(), expected);
}

TEST_F(transport, cmi_carries_8_mebibytes_each_way) {
    const service_thread service;
    const open_handle handle;
    const std::string request = pattern(8 * 1024 * 1024);
    EXPECT_TRUE(ask(handle, echo, request).payload() == request);
}

TEST_F(transport, cmi_response_of_200_kibibytes_is_the_callers_to_free) {
    const service_thread service;
    const open_handle handle;
    const cmi_result first = ask(handle, answer_size, word(200 * 1024));
    const cmi_result second = ask(handle, answer_size, word(200 * 1024));
    EXPECT_NE(first.response, second.response);
    EXPECT_TRUE(first.payload() == pattern(200 * 1024));
    EXPECT_TRUE(second.payload() == pattern(200 * 1024));
}

TEST_F(transport, cmi_response_without_payload_is_null) {
    const service_thread service;
    const open_handle handle;
    const cmi_result result = ask(handle, answer_nothing, "question");
    EXPECT_EQ(result.status, 0u);
    EXPECT_EQ(result.response, nullptr);
    EXPECT_EQ(result.length, 0u);
}

// Asks what fails and expects that the outputs stay untouched.
uint32_t failure(mts_handle_t handle, uint32_t opcode, uint32_t last = 10, uint32_t to_sap = sap) {
    int untouched = 0;
    void *response = &untouched;
    uint32_t length = 4;
    const uint32_t status = cmi_req_resp(opcode, 7, "ask", &response, &length, 0, 0, to_sap, handle, last);
    EXPECT_EQ(response, &untouched);
    EXPECT_EQ(length, 4u);
    return status;
}

TEST_F(transport, cmi_returns_the_status_of_the_service) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(failure(handle, refuse), fail_status);
}

TEST_F(transport, cmi_without_an_answer_times_out) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(failure(handle, stay_silent, 1), static_cast<uint32_t>(ETIMEDOUT));
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(ETIMEDOUT));
    EXPECT_EQ(ask(handle, echo, "next").payload(), "next");
}

TEST_F(transport, cmi_to_an_absent_service_is_unreachable) {
    const open_handle handle;
    EXPECT_EQ(failure(handle, echo), static_cast<uint32_t>(EHOSTUNREACH));
}

TEST_F(transport, cmi_on_a_closed_handle_is_a_bad_descriptor) {
    EXPECT_EQ(failure(0, echo), static_cast<uint32_t>(EBADF));
}

TEST_F(transport, cmi_to_a_service_that_dies_ends_at_once) {
    const service_process service;
    const open_handle handle;
    EXPECT_EQ(failure(handle, die), static_cast<uint32_t>(ECONNRESET));
}

TEST_F(transport, cmi_keeps_the_answers_to_messages) {
    const service_thread service;
    const open_handle handle;
    const uint32_t token = send_request(handle, echo, "message");
    EXPECT_EQ(ask(handle, echo, "question").payload(), "question");
    EXPECT_EQ(receive_answer(handle, token), "message");
}

}  // namespace

}  // namespace transport_test
