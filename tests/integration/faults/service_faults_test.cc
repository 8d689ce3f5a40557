// SPDX-License-Identifier: Apache-2.0
// Each system call with which a server serves fails in turn, and each of its allocations: at worst the client that it
// served learns so at once; the other one is served.
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <thread>

#include "footprint.h"
#include "integration/transport/test_service.h"
#include "platform_dev/mts_service.h"
#include "support/faulty_heap.h"
#include "support/faulty_system.h"

namespace {

using support::call_range;
using support::faulty_heap;
using support::faulty_system;

// The longest wait of a client, in seconds: no fault lets one wait.
constexpr uint32_t wait = 5;

// In one piece, gathered from parts, and in a memory file.
constexpr std::array<uint32_t, 3> answer_sizes{100, 10'000, 300'000};

class service_faults_test : public transport_test::transport {
  protected:
    // Returns how many faults there were: the sweep ends with the turn that no call has.
    template <typename Fault, typename... Error>
    int sweep(uint32_t answer_size, Error... error) {
        for (int turn = 1;; ++turn) {
            SCOPED_TRACE(testing::Message() << "answer of " << answer_size << " bytes, call " << turn);
            const footprint before = footprint::now();
            const int failed = serve<Fault>(answer_size, turn, error...);
            EXPECT_EQ(footprint::now(), before);
            if (failed == 0) return turn - 1;
        }
    }

    // Serves two clients, one after the other, while a call fails: that ends the exchange of one at most. Returns how
    // many calls failed.
    template <typename Fault, typename... Error>
    int serve(uint32_t answer_size, int turn, Error... error) {
        const transport_test::test_server server;
        int failed = 0;
        std::thread serving([&] {
            const Fault fault(call_range::only(turn), error...);
            EXPECT_EQ(mts_server_run(server.get()), 0);
            failed = fault.failed();
            if (failed != 0) note(fault);
        });
        const auto begin = std::chrono::steady_clock::now();
        const int answers = ask(answer_size) + ask(answer_size);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(wait));
        mts_server_stop(server.get());
        serving.join();
        EXPECT_GE(answers, 2 - failed);
        return failed;
    }

    // How often each system call failed. All are here from the start: what is counted takes no memory then.
    std::map<std::string_view, int> failures_{{"accept4", 0},      {"close", 0},   {"epoll_ctl", 0},  {"epoll_wait", 0},
                                              {"fcntl", 0},        {"fstat", 0},   {"getsockopt", 0}, {"ioctl", 0},
                                              {"memfd_create", 0}, {"pread", 0},   {"recv", 0},       {"recvmsg", 0},
                                              {"send", 0},         {"sendmsg", 0}, {"setsockopt", 0}, {"write", 0}};

  private:
    void note(const faulty_system &system) {
        const auto known = failures_.find(system.last_failed_call());
        ASSERT_NE(known, failures_.end()) << system.last_failed_call();
        ++known->second;
    }
    void note(const faulty_heap &) {}

    // Asks with a request as large as the answer. Returns whether that came, whole.
    static bool ask(uint32_t answer_size) {
        const transport_test::open_handle handle;
        std::string payload = transport_test::word(answer_size);
        payload.resize(answer_size);
        const uint32_t token = transport_test::send_request(handle, transport_test::answer_size, payload);
        const mts_recv_options_t options = transport_test::answer_to(token, wait);
        mts_msg_t answer{};
        if (mts_recv(handle, &answer, &options) != 0) return false;
        const bool is_whole = mts_payload_size(&answer) == answer_size;
        return mts_drop(handle, &answer) == 0 && is_whole;
    }
};

TEST_F(service_faults_test, of_the_system_end_no_server) {
    serve<faulty_system>(answer_sizes[0], 1, EINTR);  // threads keep their stacks
    int faults = 0;
    for (const uint32_t size : answer_sizes) {
        for (const int error : {EINTR, EAGAIN, ENOBUFS, ECONNREFUSED, ENOMEM, EMFILE}) {
            SCOPED_TRACE(strerrorname_np(error));
            faults += sweep<faulty_system>(size, error);
        }
    }
    for (const auto &[name, count] : failures_) EXPECT_GT(count, 0) << name;
    RecordProperty("system calls that failed", faults);
    std::printf("system calls that failed: %d\n", faults);
}

TEST_F(service_faults_test, of_the_heap_end_no_server) {
    serve<faulty_heap>(answer_sizes[0], 1);  // threads keep their stacks
    int faults = 0;
    for (const uint32_t size : answer_sizes) faults += sweep<faulty_heap>(size);
    EXPECT_GT(faults, 0);
    RecordProperty("allocations that failed", faults);
    std::printf("allocations that failed: %d\n", faults);
}

}  // namespace
