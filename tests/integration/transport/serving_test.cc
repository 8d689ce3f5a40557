// SPDX-License-Identifier: Apache-2.0
// The loop of a server.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <memory>

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

// A server on a thread of its own. The service on `control` removes the service whose SAP is a request's payload, says
// how that went, and adds it again when the opcode says so.
class changing_server {
  public:
    static constexpr uint32_t control = 100;
    enum opcode : uint32_t { remove_only = 1, remove_and_add };

    changing_server() : server_({sap, sap + 1}) {
        EXPECT_EQ(mts_server_add_service(server_.get(), node, control, change, server_.get()), 0);
        thread_ = std::thread([this] { EXPECT_EQ(mts_server_run(server_.get()), 0); });
    }
    ~changing_server() {
        mts_server_stop(server_.get());
        thread_.join();
    }
    changing_server(const changing_server &) = delete;
    changing_server &operator=(const changing_server &) = delete;

  private:
    static void change(void *server, const mts_request_t *request, mts_reply_t *reply) {
        uint32_t named = 0;
        std::memcpy(&named, request->payload, sizeof named);
        errno = 0;
        auto *const changed = static_cast<mts_server_t *>(server);
        const int32_t result = mts_server_remove_service(changed, node, named);
        const auto error = static_cast<uint32_t>(errno);
        if (request->opcode == remove_and_add) {
            const auto answer_one = [](void *, const mts_request_t *, mts_reply_t *to) {
                *static_cast<char *>(mts_reply_payload(to, 1)) = 'n';
            };
            EXPECT_EQ(mts_server_add_service(changed, node, named, answer_one, nullptr), 0);
        }
        const std::string answer = word(static_cast<uint32_t>(result)) + word(error);
        answer.copy(static_cast<char *>(mts_reply_payload(reply, 8)), 8);
    }

    test_server server_;
    std::thread thread_;
};

const std::string removed = word(0) + word(0);
const std::string unknown = word(0xffffffff) + word(ENOENT);

TEST_F(transport, removed_service_is_not_there) {
    const changing_server server;
    const open_handle connected;
    const open_handle fresh;
    EXPECT_EQ(exchange(connected, echo, "before"), "before");
    EXPECT_EQ(exchange(connected, changing_server::remove_only, word(sap), changing_server::control), removed);
    for (const open_handle *client : {&connected, &fresh}) {
        EXPECT_EQ(send_request(*client, echo, "after"), 0u);
        EXPECT_EQ(mts_errno_get(*client), static_cast<uint32_t>(EHOSTUNREACH));
        EXPECT_EQ(exchange(*client, echo, "other", sap + 1), "other");
    }
    EXPECT_EQ(exchange(connected, changing_server::remove_only, word(sap), changing_server::control), unknown);
}

TEST_F(transport, removed_service_leaves_its_descriptors) {
    const changing_server server;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, changing_server::remove_only, word(999), changing_server::control), unknown);
    const size_t before = count_open_descriptors();
    EXPECT_EQ(exchange(handle, echo, "x"), "x");
    EXPECT_EQ(exchange(handle, changing_server::remove_only, word(sap), changing_server::control), removed);
    EXPECT_EQ(send_request(handle, echo, "x"), 0u);
    // Its listening socket and the lock are gone, too.
    EXPECT_EQ(count_open_descriptors(), before - 2);
    EXPECT_FALSE(std::filesystem::exists(file("fe000000-43")));
}

TEST_F(transport, removed_service_can_be_added_again_at_once) {
    const changing_server server;
    const open_handle handle;
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(exchange(handle, changing_server::remove_and_add, word(sap), changing_server::control), removed);
        EXPECT_EQ(exchange(handle, echo, "x"), "n");
    }
}

TEST_F(transport, service_can_remove_itself) {
    const changing_server server;
    const open_handle handle;
    const std::string itself = word(changing_server::control);
    const uint32_t token = send_request(handle, changing_server::remove_only, itself, changing_server::control);
    EXPECT_EQ(receive_error(handle, token), static_cast<uint32_t>(ECONNRESET));
    EXPECT_EQ(send_request(handle, echo, itself, changing_server::control), 0u);
    EXPECT_EQ(exchange(handle, echo, "other"), "other");
}

// All of them have sent before the first is served, so their events come in one round.
TEST_F(transport, service_can_be_removed_with_requests_under_way) {
    test_server server;
    static mts_server_t *serving;
    serving = server.get();
    static int served;
    served = 0;
    const auto remove_neighbour = [](void *, const mts_request_t *request, mts_reply_t *) {
        ++served;
        EXPECT_EQ(mts_server_remove_service(serving, node, request->sap == 60 ? 61 : 60), 0);
        mts_server_stop(serving);
    };
    for (const uint32_t named : {60u, 61u})
        ASSERT_EQ(mts_server_add_service(server.get(), node, named, remove_neighbour, nullptr), 0);
    std::vector<std::unique_ptr<open_handle>> handles;
    for (const uint32_t named : {60u, 61u}) {
        handles.push_back(std::make_unique<open_handle>());
        EXPECT_NE(send_request(*handles.back(), echo, "x", named), 0u);
    }
    EXPECT_EQ(mts_server_run(server.get()), 0);
    EXPECT_EQ(served, 1);
}

}  // namespace

}  // namespace transport_test
