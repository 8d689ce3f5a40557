// SPDX-License-Identifier: Apache-2.0
// Each system call of each exchange fails in turn, and with it the library's call at worst: it returns within its wait,
// keeps nothing, and works on the same handle as soon as the system does.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <map>
#include <string_view>

#include "fault_test.h"
#include "platform_dev/mts_dev.h"
#include "support/captured_stdout.h"
#include "support/faulty_system.h"

namespace {

using support::call_range;
using support::faulty_system;

constexpr std::array errors{EINTR, EAGAIN, ENOBUFS, ECONNREFUSED, ENOMEM};

enum class handle_state { fresh, connected };

// Which system calls of a call of the library fail, and how.
struct fault {
    call_range turns;
    int first_error;
    int later_error;
};

fault one_fails(int turn, int error) { return {call_range::only(turn), error, error}; }

// A receive that fails with EAGAIN is followed by a wait, which then fails, too.
fault two_fail(int turn, int error) { return {{turn, turn + 1}, EAGAIN, error}; }

bool is_one_of(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::ranges::find(names, name) != names.end();
}

// What looks at the chassis database, which calls can do without, or opens it.
bool is_for_database(std::string_view system_call) {
    return is_one_of(system_call, {"fstat", "lstat", "mkdir", "mmap", "open"});
}

// Whether a call can be good all the same: because the system call is made again, or nothing hangs on it.
bool may_be_good(std::string_view system_call, int error) {
    if (error == EINTR && is_one_of(system_call, {"poll", "pread", "recv", "recvmsg", "setsockopt", "write"}))
        return true;
    if (error == EAGAIN && is_one_of(system_call, {"recv", "recvmsg", "setsockopt"})) return true;
    return system_call == "close" || is_for_database(system_call);
}

// Whether `status` is what a call may come to when a system call fails with `error`.
bool tells_failure(std::string_view system_call, int error, uint32_t status) {
    if (status == static_cast<uint32_t>(error)) return true;
    if (system_call == "connect" && error == ECONNREFUSED) return status == EHOSTUNREACH;
    if (is_one_of(system_call, {"getsockopt", "ioctl"}) && status == EAGAIN) return true;  // no room that is known of
    if (system_call == "getsockopt") return status == EPERM;  // nobody knows who the peer is
    if (is_one_of(system_call, {"fcntl", "fstat", "pread"}) && status == EPROTO) return true;  // no answer to be read
    return is_for_database(system_call) && status == ENOENT;
}

// Functions that tell only that they failed, and how.
bool tells_only_that(std::string_view call, uint32_t status) {
    if (call == "pm_get_clear_eth_stats") return status == static_cast<uint32_t>(-1);
    return is_one_of(call, {"pm_ips_send_receive", "pm_get_next_port_fcot_info_with_ddm"}) && status == PM_ERR_FAILURE;
}

bool may_come_to(const exchange_call &call, std::string_view system_call, int error, uint32_t status) {
    if (status == 0) return may_be_good(system_call, error);
    return tells_failure(system_call, error, status) || tells_only_that(call.name, status);
}

class system_faults_test : public fault_test {
  protected:
    // Opens what a process opens once, under both names of the run-time directory.
    void SetUp() override {
        const support::captured_stdout quiet;
        for (int round = 0; round < 2; ++round) {
            respell_runtime_dir();
            const client warm;
            for (const exchange_call &call : exchange_calls()) EXPECT_EQ(call.run(warm.handle()), 0u) << call.name;
        }
    }

    // Lets each call fail at each of its system calls; `fault_at` makes the fault of a turn.
    template <typename Faults>
    void sweep(handle_state state, Faults fault_at) {
        int faults = 0;
        {
            const support::captured_stdout quiet;
            for (const exchange_call &call : exchange_calls()) {
                for (const int error : errors) faults += sweep_call(call, state, error, fault_at);
            }
        }
        report("system calls that failed", faults);
        expect_daemon_as_before();
    }

    // How often each system call was the last that failed. All are here from the start: what is counted takes no memory
    // then.
    std::map<std::string_view, int> failures_{{"close", 0},      {"connect", 0},    {"fcntl", 0},   {"fstat", 0},
                                              {"getsockopt", 0}, {"lstat", 0},      {"ioctl", 0},   {"memfd_create", 0},
                                              {"mkdir", 0},      {"mmap", 0},       {"open", 0},    {"poll", 0},
                                              {"pread", 0},      {"recv", 0},       {"recvmsg", 0}, {"send", 0},
                                              {"sendmsg", 0},    {"setsockopt", 0}, {"socket", 0},  {"write", 0}};

  private:
    // Returns how many faults there were: the sweep ends with the turn that no system call has.
    template <typename Faults>
    int sweep_call(const exchange_call &call, handle_state state, int error, Faults fault_at) {
        for (int turn = 1;; ++turn) {
            SCOPED_TRACE(testing::Message() << call.name << ", system call " << turn << ", " << strerrorname_np(error));
            if (state == handle_state::fresh) respell_runtime_dir();
            if (!fails_and_recovers(call, state, fault_at(turn, error))) return turn - 1;
        }
    }

    bool fails_and_recovers(const exchange_call &call, handle_state state, const fault &injected) {
        const footprint before = footprint::now();
        bool failed = false;
        {
            const client asking;
            if (state == handle_state::connected) call.run(asking.handle());
            const footprint connected = footprint::now();
            failed = fails(call, asking.handle(), injected);
            EXPECT_EQ(call.run(asking.handle()), 0u) << "the next call";
            const long opened = footprint::now().descriptors - connected.descriptors;
            EXPECT_LE(opened, state == handle_state::connected ? 0 : 1);
        }
        EXPECT_EQ(footprint::now(), before);
        return failed;
    }

    // Makes a call while the system fails. Returns whether it did.
    bool fails(const exchange_call &call, mts_handle_t handle, const fault &injected) {
        const auto begin = std::chrono::steady_clock::now();
        const faulty_system system(injected.turns, injected.first_error, injected.later_error);
        const uint32_t status = call.run(handle);
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        EXPECT_LT(took.count(), call.wait_seconds);
        if (system.failed() == 0) return false;
        ++failures_.at(system.last_failed_call());
        const int last_error = system.failed() == 1 ? injected.first_error : injected.later_error;
        // A close comes behind what it cleans up after.
        EXPECT_TRUE(may_come_to(call, system.last_failed_call(), last_error, status) ||
                    (is_one_of(system.last_failed_call(), {"close"}) &&
                     may_come_to(call, system.first_failed_call(), injected.first_error, status)))
            << system.first_failed_call() << " and " << system.last_failed_call() << " came to " << status;
        return true;
    }
};

TEST_F(system_faults_test, end_calls_on_a_fresh_handle) {
    sweep(handle_state::fresh, one_fails);
    failures_.erase("poll");  // waits only for a memory file that is later than its announcement
    for (const auto &[name, count] : failures_) EXPECT_GT(count, 0) << name;
}

TEST_F(system_faults_test, end_calls_on_a_connected_handle) {
    sweep(handle_state::connected, one_fails);
    for (const char *name : {"ioctl", "memfd_create", "pread", "recv", "recvmsg", "send", "sendmsg", "write"}) {
        EXPECT_GT(failures_.at(name), 0) << name;
    }
}

TEST_F(system_faults_test, end_calls_that_wait_again) {
    sweep(handle_state::connected, two_fail);
    EXPECT_GT(failures_.at("poll"), 0);
}

TEST_F(system_faults_test, end_the_opening_of_a_handle) {
    for (const int error : errors) {
        for (int turn = 1; turn <= 2; ++turn) {  // makes the run-time directory, and looks whose it is
            const footprint before = footprint::now();
            {
                const faulty_system system(call_range::only(turn), error);
                EXPECT_EQ(mts_dev_open(), 0u);
                EXPECT_EQ(errno, error);
                EXPECT_EQ(system.failed(), 1);
            }
            EXPECT_EQ(footprint::now(), before);
        }
    }
}

}  // namespace
