// SPDX-License-Identifier: Apache-2.0
// The descriptor of a handle, as a loop over poll sees it.
#include <poll.h>
#include <sys/resource.h>

#include <cerrno>

#include "platform_dev/mts_handle.hpp"
#include "test_service.h"

namespace transport_test {

namespace {

constexpr int at_once = 0;
constexpr int patiently = 10'000;

bool is_readable(mts_handle_t handle, int milliseconds = at_once) {
    pollfd waited{mts_dev_descriptor(handle), POLLIN, 0};
    EXPECT_GE(waited.fd, 0);
    return poll(&waited, 1, milliseconds) == 1;
}

void receive_any(mts_handle_t handle, int32_t expected = 0) {
    const mts_recv_options_t options{};
    mts_msg_t response{};
    ASSERT_EQ(mts_recv(handle, &response, &options), expected);
    if (expected == 0) mts_drop(handle, &response);
}

TEST_F(transport, descriptor_is_readable_while_an_answer_waits) {
    const service_thread service;
    const open_handle handle;
    EXPECT_FALSE(is_readable(handle));
    ASSERT_NE(send_request(handle, echo, "a"), 0u);
    EXPECT_TRUE(is_readable(handle, patiently));
    receive_any(handle);
    EXPECT_FALSE(is_readable(handle));
}

TEST_F(transport, descriptor_that_is_asked_for_late_knows_of_what_came_before) {
    const service_thread service({sap, sap + 1});
    const open_handle handle;
    ASSERT_NE(send_request(handle, echo, "kept"), 0u);
    EXPECT_EQ(exchange(handle, echo, "other"), "other");
    const uint32_t on_its_way = send_request(handle, echo, "on its way", sap + 1);
    EXPECT_TRUE(is_readable(handle));
    receive_any(handle);
    EXPECT_TRUE(is_readable(handle, patiently));
    EXPECT_EQ(receive_answer(handle, on_its_way), "on its way");
    EXPECT_FALSE(is_readable(handle));
}

TEST_F(transport, descriptor_is_readable_while_answers_are_kept_for_later) {
    const service_thread service;
    const open_handle handle;
    EXPECT_FALSE(is_readable(handle));
    const uint32_t first = send_request(handle, echo, "first");
    const uint32_t second = send_request(handle, echo, "second");
    EXPECT_EQ(exchange(handle, echo, "third"), "third");
    EXPECT_TRUE(is_readable(handle));
    EXPECT_EQ(receive_answer(handle, second), "second");
    EXPECT_TRUE(is_readable(handle));
    EXPECT_EQ(receive_answer(handle, first), "first");
    EXPECT_FALSE(is_readable(handle));
}

TEST_F(transport, descriptor_watches_every_service_and_the_end_of_each) {
    const service_thread lasting({sap + 1});
    const open_handle handle;
    EXPECT_FALSE(is_readable(handle));
    {
        service_process dying;
        ASSERT_NE(send_request(handle, stay_silent), 0u);
        ASSERT_NE(send_request(handle, echo, "x", sap + 1), 0u);
        EXPECT_TRUE(is_readable(handle, patiently));
        receive_any(handle);
        EXPECT_FALSE(is_readable(handle));
    }
    EXPECT_TRUE(is_readable(handle, patiently));
    receive_any(handle, -1);
    EXPECT_EQ(mts_errno_get(handle), static_cast<uint32_t>(ECONNRESET));
    EXPECT_FALSE(is_readable(handle));
}

TEST_F(transport, descriptor_watches_a_service_that_came_back) {
    const open_handle handle;
    EXPECT_FALSE(is_readable(handle));
    for (int life = 0; life < 2; ++life) {
        const service_process service;
        ASSERT_NE(send_request(handle, echo, "x"), 0u);
        EXPECT_TRUE(is_readable(handle, patiently));
        receive_any(handle);
    }
}

TEST_F(transport, descriptor_stays_the_same_and_ends_with_its_handle) {
    const size_t before = count_open_descriptors();
    {
        const platform_dev::mts_handle handle;
        const int descriptor = handle.descriptor();
        EXPECT_EQ(mts_dev_descriptor(handle.get()), descriptor);
        EXPECT_GT(count_open_descriptors(), before);
    }
    EXPECT_EQ(count_open_descriptors(), before);
}

TEST_F(transport, descriptor_of_no_handle_is_refused) {
    errno = 0;
    EXPECT_EQ(mts_dev_descriptor(0), -1);
    EXPECT_EQ(errno, EBADF);
}

// Leaves the process no descriptor, as long as it lives.
class no_descriptors {
  public:
    no_descriptors() {
        getrlimit(RLIMIT_NOFILE, &usual_);
        const rlimit none{0, usual_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    no_descriptors(const no_descriptors &) = delete;
    no_descriptors &operator=(const no_descriptors &) = delete;
    ~no_descriptors() { setrlimit(RLIMIT_NOFILE, &usual_); }

  private:
    rlimit usual_{};
};

TEST_F(transport, descriptor_that_cannot_be_opened_is_a_failure_that_passes) {
    const service_thread service;
    const open_handle handle;
    {
        const no_descriptors here;
        EXPECT_EQ(mts_dev_descriptor(handle), -1);
        EXPECT_EQ(errno, EMFILE);
    }
    ASSERT_NE(send_request(handle, echo, "x"), 0u);
    EXPECT_TRUE(is_readable(handle, patiently));
}

TEST_F(transport, owner_of_a_handle_hands_it_on_and_closes_it_once) {
    const service_thread service;
    platform_dev::mts_handle first;
    const mts_handle_t value = first.get();
    platform_dev::mts_handle second(std::move(first));
    EXPECT_FALSE(first);
    EXPECT_EQ(second.get(), value);
    first = std::move(second);
    EXPECT_EQ(exchange(first.get(), echo, "x"), "x");
    first = platform_dev::mts_handle();
    EXPECT_EQ(mts_dev_close(value), -1);
    EXPECT_TRUE(first);
}

}  // namespace

}  // namespace transport_test
