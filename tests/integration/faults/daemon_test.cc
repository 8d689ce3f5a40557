// SPDX-License-Identifier: Apache-2.0
// The switch itself killed before a request, while it holds it and after it answered, restarted, stopped and continued:
// every call returns within its wait and says what became of it, and the next one on the same handle is answered.
#include <poll.h>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <ranges>
#include <thread>

#include "exchange_calls.h"
#include "footprint.h"
#include "integration/virtual_switch/virtual_switch_test.h"
#include "platform_dev/mts_dev.h"
#include "short_waits.h"
#include "support/captured_stdout.h"

using namespace faults;

namespace {

// Where threads come to, wait, and are let go together.
class meeting_place {
  public:
    void arrive() {
        std::unique_lock lock(mutex_);
        ++arrived_;
        changed_.notify_all();
        changed_.wait(lock, [this] { return open_; });
    }

    void await(size_t count) {
        std::unique_lock lock(mutex_);
        EXPECT_TRUE(changed_.wait_for(lock, std::chrono::seconds(60), [&] { return arrived_ >= count; }));
    }

    void open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    size_t arrived_ = 0;
    bool open_ = false;
};

void wait_until_readable(int socket) {
    pollfd readable{socket, POLLIN, 0};
    constexpr int limit_ms = 60'000;
    EXPECT_EQ(poll(&readable, 1, limit_ms), 1);
}

void wait_for_nothing(int) {}

// What the library holds, without what the tests have noted.
footprint held_now() {
    static_cast<void>(take_set_waits());
    return footprint::now();
}

class daemon_faults : public runtime_dir_test {
  protected:
    // The first look-up opens the chassis database, which stays open.
    daemon_faults() {
        start();
        const client first;
        expect_all(first.handle(), 0);
    }

    void start() { daemon_.emplace(director); }

    void kill_daemon() {
        daemon_->send(SIGKILL);
        EXPECT_EQ(daemon_->wait(), 128 + SIGKILL);
        daemon_.reset();
    }

    static void expect(const exchange_call &call, mts_handle_t handle, uint32_t error) {
        EXPECT_EQ(call.run(handle), error == 0 ? 0 : failure_of(call, error)) << call.name;
    }

    // Makes every call, one after the other, on one handle.
    static void expect_all(mts_handle_t handle, uint32_t error) {
        for (const exchange_call &call : exchange_calls()) expect(call, handle, error);
    }

    // Makes every call at once, each on a thread and a handle of its own. When all requests are out, and `wait` has
    // waited for their answers or not, does `meanwhile`; then the calls go on. They must end with `error`, and the next
    // ones on their handles well.
    void make_all_at_once(void (*wait)(int socket), auto meanwhile, uint32_t error) {
        const long descriptors = footprint::now().descriptors;
        meeting_place requested;
        meeting_place answered;
        std::optional<before_first_wait> before(std::in_place, [&](int socket) {
            wait(socket);
            requested.arrive();
        });
        std::vector<std::thread> threads;
        for (const exchange_call &call : exchange_calls()) {
            threads.emplace_back([&call, &answered, error] {
                const client own;
                expect(call, own.handle(), error);
                answered.arrive();
                expect(call, own.handle(), 0);
            });
        }
        requested.await(threads.size());
        meanwhile();
        requested.open();
        answered.await(threads.size());
        before.reset();
        if (!daemon_) start();
        answered.open();
        for (std::thread &thread : threads) thread.join();
        EXPECT_EQ(footprint::now().descriptors, descriptors);
    }

    std::optional<virtual_switch_process> daemon_;
    support::captured_stdout output_;
};

TEST_F(daemon_faults, killed_before_the_request) {
    const footprint before = held_now();
    const mts_handle_t handle = mts_dev_open();
    expect_all(handle, 0);
    kill_daemon();
    expect_all(handle, EHOSTUNREACH);
    start();
    expect_all(handle, 0);
    mts_dev_close(handle);
    EXPECT_EQ(held_now(), before);
}

TEST_F(daemon_faults, restarted_between_two_requests) {
    const footprint before = held_now();
    const mts_handle_t handle = mts_dev_open();
    expect_all(handle, 0);
    kill_daemon();
    start();
    expect_all(handle, 0);
    mts_dev_close(handle);
    EXPECT_EQ(held_now(), before);
}

// What it answers at last is answered to nobody, and not to the next request.
TEST_F(daemon_faults, stopped_for_longer_than_the_wait) {
    const footprint before = held_now();
    const mts_handle_t handle = mts_dev_open();
    expect_all(handle, 0);
    daemon_->send(SIGSTOP);
    {
        const shortened_waits shortened;
        expect_all(handle, ETIMEDOUT);
    }
    daemon_->send(SIGCONT);
    // In another order, so that the late answers, which come first, are none to these calls.
    for (const exchange_call &call : exchange_calls() | std::views::reverse) expect(call, handle, 0);
    mts_dev_close(handle);
    EXPECT_EQ(held_now(), before);
}

TEST_F(daemon_faults, stopped_for_less_than_the_wait) {
    daemon_->send(SIGSTOP);
    make_all_at_once(
        wait_for_nothing, [this] { daemon_->send(SIGCONT); }, 0);
}

TEST_F(daemon_faults, killed_while_it_holds_the_request) {
    daemon_->send(SIGSTOP);
    make_all_at_once(
        wait_for_nothing, [this] { kill_daemon(); }, ECONNRESET);
}

TEST_F(daemon_faults, restarted_while_it_holds_the_request) {
    daemon_->send(SIGSTOP);
    const auto restart = [this] {
        kill_daemon();
        start();
    };
    make_all_at_once(wait_for_nothing, restart, ECONNRESET);
}

TEST_F(daemon_faults, killed_after_it_answered) {
    make_all_at_once(
        wait_until_readable, [this] { kill_daemon(); }, 0);
}

// The one wait here that lasts as long as it says.
TEST_F(daemon_faults, wait_for_a_stopped_daemon_ends_after_its_seconds) {
    const unaltered_waits unaltered;
    const client own;
    daemon_->send(SIGSTOP);
    mts_msg_t answer{};
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(pm_ips_send_receive(own.handle(), PM_NODE_SUPERVISOR, PM_SAP_PORT_MANAGER, MTS_OPC_PM_GET_PORT_INFO,
                                  nullptr, 0, &answer, 1),
              -1);
    const auto spent = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(mts_errno_get(own.handle()), uint32_t{ETIMEDOUT});
    EXPECT_GE(spent, std::chrono::seconds(1));
    EXPECT_LT(spent, std::chrono::seconds(3));
}

}  // namespace
