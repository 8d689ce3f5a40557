// SPDX-License-Identifier: Apache-2.0
// The loop of a server.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>

#include "test_service.h"

namespace transport_test {

namespace {

TEST_F(transport, server_stopped_before_it_runs_returns_at_once) {
    const test_server server;
    mts_server_stop(server.get());
    EXPECT_EQ(mts_server_run(server.get()), 0);
}

TEST_F(transport, server_can_be_stopped_by_a_signal_handler) {
    static mts_server_t *stopped;
    const test_server server;
    stopped = server.get();
    const auto before = signal(SIGALRM, [](int) { mts_server_stop(stopped); });
    ualarm(10000, 0);
    EXPECT_EQ(mts_server_run(server.get()), 0);
    signal(SIGALRM, before);
}

TEST_F(transport, server_watches_a_descriptor_of_the_callers) {
    const test_server server;
    const int event = eventfd(1, EFD_CLOEXEC);
    const auto stop = [](void *watching, int fd) {
        eventfd_t count = 0;
        EXPECT_EQ(eventfd_read(fd, &count), 0);
        mts_server_stop(static_cast<mts_server_t *>(watching));
    };
    ASSERT_EQ(mts_server_add_fd(server.get(), event, stop, server.get()), 0);
    EXPECT_EQ(mts_server_run(server.get()), 0);
    close(event);
}

TEST_F(transport, server_refuses_to_watch_a_bad_descriptor) {
    const test_server server;
    errno = 0;
    EXPECT_EQ(mts_server_add_fd(
                  server.get(), -1, [](void *, int) {}, nullptr),
              -1);
    EXPECT_EQ(errno, EBADF);
}

TEST_F(transport, destroying_no_server_does_nothing) { mts_server_destroy(nullptr); }

TEST_F(transport, server_without_descriptors_turns_clients_away_and_serves_the_others) {
    const open_handle served;
    const open_handle turned_away;
    const service_thread service;
    EXPECT_EQ(exchange(served, echo, "before"), "before");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    // The client's end takes the last number that the limit allows.
    const int next = dup(0);
    close(next);
    const rlimit scarce = {static_cast<rlim_t>(next) + 1, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &scarce), 0);
    // The client learns it in the send or in the receive, whichever the server is in time for.
    const uint32_t token = send_request(turned_away, echo, "x");
    const uint32_t error = token == 0 ? mts_errno_get(turned_away) : receive_error(turned_away, token);
    EXPECT_EQ(exchange(served, echo, "meanwhile"), "meanwhile");
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_THAT(error, testing::AnyOf(EHOSTUNREACH, ECONNRESET));
    EXPECT_EQ(exchange(turned_away, echo, "after"), "after");
}

}  // namespace

}  // namespace transport_test
