// SPDX-License-Identifier: Apache-2.0
// What a process or a machine has only so much of runs out: descriptors, and room in the run-time directory.
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "fault_test.h"
#include "support/captured_stdout.h"

namespace {

using testing::MatchesRegex;

bool takes_descriptor(const exchange_call &call) { return std::string_view(call.name).ends_with(".memory_file"); }

// While the object lives, the process can open only so many descriptors more.
class few_descriptors {
  public:
    explicit few_descriptors(rlim_t left) {
        getrlimit(RLIMIT_NOFILE, &before_);
        fill_gaps();
        const rlimit limit{static_cast<rlim_t>(fillers_.back()) + 1 + left, before_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
    ~few_descriptors() {
        setrlimit(RLIMIT_NOFILE, &before_);
        for (const int fd : fillers_) close(fd);
    }
    few_descriptors(const few_descriptors &) = delete;
    few_descriptors &operator=(const few_descriptors &) = delete;

  private:
    // New descriptors get the lowest free numbers, so the last one is above all gaps when it is above all others.
    void fill_gaps() {
        constexpr int above_all = 256;
        while (fillers_.empty() || fillers_.back() < above_all) fillers_.push_back(dup(STDIN_FILENO));
    }

    rlimit before_{};
    std::vector<int> fillers_;
};

class descriptor_faults_test : public fault_test {
  protected:
    // Opens what a process opens once.
    void SetUp() override {
        const client warm;
        for (const exchange_call &call : exchange_calls()) EXPECT_EQ(call.run(warm.handle()), 0u) << call.name;
    }

    static uint32_t run_with(rlim_t descriptors, const exchange_call &call, mts_handle_t handle) {
        const few_descriptors limit(descriptors);
        return call.run(handle);
    }

  private:
    support::captured_stdout quiet_;
};

TEST_F(descriptor_faults_test, end_calls_that_have_to_connect) {
    for (const exchange_call &call : exchange_calls()) {
        SCOPED_TRACE(call.name);
        const footprint before = footprint::now();
        {
            const client asking;
            EXPECT_THAT(run_with(0, call, asking.handle()),
                        testing::AnyOf(uint32_t{EMFILE}, PM_ERR_FAILURE, UINT32_MAX));
            EXPECT_EQ(call.run(asking.handle()), 0u) << "the next call";
        }
        EXPECT_EQ(footprint::now(), before);
    }
}

TEST_F(descriptor_faults_test, end_calls_whose_payload_needs_one) {
    for (const exchange_call &call : exchange_calls()) {
        SCOPED_TRACE(call.name);
        const footprint before = footprint::now();
        {
            const client asking;
            EXPECT_EQ(run_with(1, call, asking.handle()) == 0, !takes_descriptor(call)) << "with one left";
            EXPECT_EQ(run_with(2, call, asking.handle()), 0u) << "with two left";
            EXPECT_EQ(run_with(0, call, asking.handle()) == 0, !takes_descriptor(call)) << "with none left";
            EXPECT_EQ(call.run(asking.handle()), 0u) << "the next call";
        }
        EXPECT_EQ(footprint::now(), before);
    }
    expect_daemon_as_before();
}

constexpr std::string_view no_file_system = "no file system can be mounted: ";

// A run-time directory of its own size, which nobody but this process sees.
class small_runtime_dir {
  public:
    // `options` as mount takes them for a file system in memory. Why there is none is in `reason` then.
    explicit small_runtime_dir(const char *options) {
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("none", directory_.file("").c_str(), "tmpfs", 0, options) != 0) {
            reason_ = std::string(no_file_system) + strerrorname_np(errno);
        }
    }
    ~small_runtime_dir() { umount2(directory_.file("").c_str(), MNT_DETACH); }
    small_runtime_dir(const small_runtime_dir &) = delete;
    small_runtime_dir &operator=(const small_runtime_dir &) = delete;

    [[nodiscard]] const std::string &reason() const { return reason_; }

    // Takes what room there is, for bytes and for names.
    void fill() const {
        std::ofstream bytes(directory_.file("bytes"));
        while (bytes << std::string(4096, 'x') << std::flush) {
        }
        for (int name = 0; std::ofstream(directory_.file(std::to_string(name).c_str())).is_open(); ++name) {
        }
    }

  private:
    temporary_runtime_dir directory_;
    std::string reason_;
};

TEST(runtime_dir_faults, do_not_reach_clients_of_a_running_switch) {
    const small_runtime_dir directory("mode=0700,size=1m,nr_inodes=64");
    if (!directory.reason().empty()) GTEST_SKIP() << directory.reason();
    const virtual_switch_process daemon(director);
    const support::captured_stdout quiet;
    const client connected_before;
    for (const exchange_call &call : exchange_calls()) EXPECT_EQ(call.run(connected_before.handle()), 0u) << call.name;
    directory.fill();
    const client fresh;
    for (const exchange_call &call : exchange_calls()) {
        EXPECT_EQ(call.run(connected_before.handle()), 0u) << call.name;
        EXPECT_EQ(call.run(fresh.handle()), 0u) << call.name;
    }
}

// Starts the switch in a directory without room. Returns what it complains of.
std::string complaint_of_switch(const char *options) {
    const small_runtime_dir directory(options);
    if (!directory.reason().empty()) return directory.reason();
    child_process daemon({PM_VIRTUAL_SWITCH, director});
    EXPECT_EQ(daemon.read_line(child_process::standard_output), "");
    EXPECT_EQ(daemon.wait(), 1);
    return daemon.read_rest(child_process::standard_error);
}

TEST(runtime_dir_faults, end_a_switch_that_has_no_room_for_the_chassis_database) {
    const std::string complaint = complaint_of_switch("mode=0700,size=64k");
    if (complaint.starts_with(no_file_system)) GTEST_SKIP() << complaint;
    EXPECT_THAT(complaint, MatchesRegex("pm-virtual-switch: chassis database in /tmp/.*: No space left on device\n"));
}

TEST(runtime_dir_faults, end_a_switch_that_has_no_room_for_a_name) {
    const std::string complaint = complaint_of_switch("mode=0700,size=1m,nr_inodes=5");
    if (complaint.starts_with(no_file_system)) GTEST_SKIP() << complaint;
    EXPECT_THAT(complaint, MatchesRegex("pm-virtual-switch: SAP [0-9]+ in /tmp/.*: No space left on device\n"));
}

}  // namespace
