// SPDX-License-Identifier: Apache-2.0
// Handles, and the records that operations on them fill.
#include <algorithm>
#include <set>

#include "test_service.h"

namespace transport_test {

namespace {

void expect_bad_handle(mts_handle_t handle) {
    mts_msg_t message{};
    const mts_recv_options_t options = answer_to(1, 0);
    EXPECT_EQ(mts_send(handle, node, sap, echo, "x", 1, &message, 0, 0), -1);
    EXPECT_EQ(mts_recv(handle, &message, &options), -1);
    EXPECT_EQ(mts_drop(handle, &message), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EBADF));
    errno = 0;
    EXPECT_EQ(mts_dev_close(handle), -1);
    EXPECT_EQ(errno, EBADF);
}

TEST_F(transport, zero_is_no_handle) { expect_bad_handle(0); }

TEST_F(transport, closed_handle_is_bad) {
    const mts_handle_t handle = mts_dev_open();
    ASSERT_EQ(mts_dev_close(handle), 0);
    expect_bad_handle(handle);
}

TEST_F(transport, closed_handle_stays_bad_when_its_place_is_taken) {
    const mts_handle_t stale = mts_dev_open();
    ASSERT_EQ(mts_dev_close(stale), 0);
    const open_handle successor;
    ASSERT_NE(stale, successor);
    expect_bad_handle(stale);
    EXPECT_EQ(mts_errno_get(successor), 0u);
}

TEST_F(transport, more_than_1024_handles_open_until_the_table_is_full) {
    std::vector<mts_handle_t> handles;
    for (mts_handle_t handle = mts_dev_open(); handle != 0; handle = mts_dev_open()) handles.push_back(handle);
    EXPECT_EQ(errno, EMFILE);
    EXPECT_GE(handles.size(), 1024u);
    EXPECT_EQ(std::set<mts_handle_t>(handles.begin(), handles.end()).size(), handles.size());
    EXPECT_TRUE(std::all_of(handles.begin(), handles.end(), [](auto handle) { return mts_dev_close(handle) == 0; }));
    const open_handle again;
}

TEST_F(transport, second_drop_of_a_request_is_invalid) {
    const service_thread service;
    const open_handle handle;
    mts_msg_t request;
    ASSERT_EQ(mts_send(handle, node, sap, stay_silent, "x", 1, &request, 0, 0), 0);
    EXPECT_EQ(mts_drop(handle, &request), 0);
    EXPECT_EQ(mts_drop(handle, &request), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EINVAL));
}

TEST_F(transport, second_drop_of_an_answer_is_invalid) {
    const service_thread service;
    const open_handle handle;
    const mts_recv_options_t options = answer_to(send_request(handle, answer_size, word(200 * 1024)));
    mts_msg_t answer;
    ASSERT_NE(mts_recv(handle, &answer, &options), -1);
    EXPECT_EQ(mts_drop(handle, &answer), 0);
    EXPECT_EQ(mts_payload_get(&answer), nullptr);
    EXPECT_EQ(mts_drop(handle, &answer), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EINVAL));
}

TEST_F(transport, zeroed_record_has_nothing_to_drop_and_keeps_the_error) {
    const open_handle handle;
    mts_msg_t request;
    EXPECT_EQ(mts_send(handle, node, sap, echo, "x", 1, &request, 0, 0), -1);
    mts_msg_t zeroed{};
    EXPECT_EQ(mts_drop(handle, &zeroed), 0);
    EXPECT_EQ(mts_errno_get(handle), uint32_t{EHOSTUNREACH});
}

TEST_F(transport, record_that_is_no_message_is_invalid_to_drop) {
    const open_handle handle;
    mts_msg_t rubbish;
    std::fill(std::begin(rubbish.word), std::end(rubbish.word), 0xa5a5a5a5u);
    EXPECT_EQ(mts_drop(handle, &rubbish), -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EINVAL));
    EXPECT_EQ(mts_drop(handle, nullptr), -1);
    EXPECT_EQ(mts_rr_token_get(&rubbish), 0u);
    EXPECT_EQ(mts_payload_get(&rubbish), nullptr);
}

TEST_F(transport, answer_outlives_its_handle_until_it_is_dropped) {
    const service_thread service;
    const mts_handle_t handle = mts_dev_open();
    const mts_recv_options_t options = answer_to(send_request(handle, answer_size, word(200 * 1024)));
    mts_msg_t answer;
    ASSERT_NE(mts_recv(handle, &answer, &options), -1);
    ASSERT_EQ(mts_dev_close(handle), 0);
    EXPECT_EQ(std::string(static_cast<char *>(mts_payload_get(&answer)), 3), pattern(3));
    EXPECT_EQ(mts_drop(handle, &answer), -1);  // and is released, or the leak check would tell
    EXPECT_EQ(mts_payload_get(&answer), nullptr);
}

TEST_F(transport, error_number_stays_until_the_next_failure) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(send_request(handle, echo, "x", 99), 0u);
    EXPECT_EQ(exchange(handle, echo, "x"), "x");
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(EHOSTUNREACH));
}

}  // namespace

}  // namespace transport_test
