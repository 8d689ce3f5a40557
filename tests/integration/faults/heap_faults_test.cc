// SPDX-License-Identifier: Apache-2.0
// Each allocation of each exported function fails in turn: the function returns and keeps nothing, its outputs are as
// its header says, and the same call is good on the same handle as soon as there is memory.
#include <dlfcn.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <fstream>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "exported_calls.h"
#include "fault_test.h"
#include "integration/transport/test_service.h"
#include "platform_dev/mts_dev.h"
#include "protocol/port_info_layout.h"
#include "protocol/transceiver_layout.h"
#include "support/captured_stdout.h"
#include "support/faulty_heap.h"

namespace {

using support::call_range;
using support::faulty_heap;

// How many allocations fail: one, or all from then on.
constexpr std::array<call_range (*)(int), 2> failures{call_range::only, call_range::from};

// One transceiver behind words of the platform's, as a service of the test's own answers.
mts_msg_t transceiver_answer(mts_handle_t handle) {
    constexpr size_t records = pm::fcot_message_header_size + pm::answer_header_size;
    std::string payload(records + sizeof(pm_fcot_info_t), '\0');
    payload[records - 1] = 1;
    constexpr uint32_t sap = 1;
    const transport_test::service_thread service({sap});
    mts_msg_t answer{};
    EXPECT_EQ(pm_ips_send_receive(handle, PM_NODE_SUPERVISOR, sap, transport_test::echo, payload.data(),
                                  static_cast<uint32_t>(payload.size()), &answer, 10),
              0);
    return answer;
}

// The loader loses a block of its own when it runs out of memory for what it notes down about a library that needs more
// than a few others, as libraries with a sanitizer do.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long lost_by_loader = 1;
#else
constexpr long lost_by_loader = 0;
#endif

bool loads_libraries(const exported_call &call) { return std::string_view(call.name).ends_with(".database"); }

// The subscription to the port-channel database outlives a call that finds no database.
void close_subscription() {
    void *const left_open = dlopen("libfsrv_client.so", RTLD_LAZY | RTLD_NOLOAD);
    if (left_open == nullptr) return;
    dlclose(left_open);
    dlclose(left_open);
}

class heap_faults_test : public fault_test {
  protected:
    // Lets each call of a table that asks no service fail at each of its allocations.
    void sweep(std::span<const exported_call> calls) {
        int faults = 0;
        {
            const support::captured_stdout quiet;
            for (const exported_call &call : calls) {
                EXPECT_TRUE(call.run(answers_)) << call.name;
                const int before = faults;
                for (const auto failing : failures) faults += sweep_call(call, failing);
                EXPECT_EQ(faults > before, call.allocates) << call.name;
            }
        }
        report("allocations that failed", faults);
    }

    received_answers answers_{};

  private:
    int sweep_call(const exported_call &call, call_range (*failing)(int)) {
        fails(call, failing(1));  // the C library keeps for good what it first tells of an error with
        for (int turn = 1;; ++turn) {
            SCOPED_TRACE(testing::Message() << call.name << ", allocation " << turn);
            const footprint before = footprint::now();
            const bool failed = fails(call, failing(turn));
            EXPECT_TRUE(call.run(answers_)) << "the next call";
            footprint after = footprint::now();
            if (loads_libraries(call) && after.live_blocks == before.live_blocks + lost_by_loader) {
                after.live_blocks = before.live_blocks;
            }
            EXPECT_EQ(after, before);
            if (!failed) return turn - 1;
        }
    }

    // Makes a call without memory. Returns whether it needed some.
    bool fails(const exported_call &call, call_range turns) {
        int failed = 0;
        {
            const faulty_heap heap(turns);
            call.run(answers_);
            failed = heap.failed();
        }
        close_subscription();
        return failed != 0;
    }
};

class reading_heap_faults_test : public heap_faults_test {
  protected:
    void SetUp() override {
        const support::captured_stdout quiet;
        const mts_handle_t handle = client_.handle();
        const pm_if_index_range_t ports = range_of("Ethernet4/5", "Ethernet4/8");
        EXPECT_EQ(pm_get_port_info_range(handle, index_of("fc1/1"), index_of("fc1/4"), &answers_.ports), 0u);
        EXPECT_EQ(pm_get_port_info_brief(handle, 0, 0, 0, 0, 0, 1, &ports, &answers_.ports_in_brief), 0u);
        EXPECT_EQ(pm_get_next_port_info(handle, index_of("fc1/1"), &answers_.next_port), 0u);
        answers_.transceivers = transceiver_answer(handle);
    }

    void TearDown() override {
        for (mts_msg_t *const answer :
             {&answers_.ports, &answers_.ports_in_brief, &answers_.next_port, &answers_.transceivers}) {
            EXPECT_EQ(mts_drop(client_.handle(), answer), 0);
        }
    }

  private:
    client client_;
};

// On a switch whose chassis looks members of port channels up in the database.
class database_heap_faults_test : public heap_faults_test {
  protected:
    static void SetUpTestSuite() { start_switch(fixed_switch); }
};

class exchange_heap_faults_test : public fault_test {
  protected:
    // Lets each exchange fail at each of its allocations, on a handle that is connected or not.
    void sweep(bool is_connected) {
        int faults = 0;
        {
            const support::captured_stdout quiet;
            const client warm;
            for (const exchange_call &call : exchange_calls()) {
                EXPECT_EQ(call.run(warm.handle()), 0u);
                const int before = faults;
                for (const auto failing : failures) faults += sweep_call(call, is_connected, failing);
                EXPECT_GT(faults, before) << call.name;
            }
        }
        report("allocations that failed", faults);
        expect_daemon_as_before();
    }

  private:
    static int sweep_call(const exchange_call &call, bool is_connected, call_range (*failing)(int)) {
        for (int turn = 1;; ++turn) {
            SCOPED_TRACE(testing::Message() << call.name << ", allocation " << turn);
            const footprint before = footprint::now();
            bool failed = false;
            {
                const client asking;
                if (is_connected) call.run(asking.handle());
                const footprint connected = footprint::now();
                failed = fails(call, asking.handle(), failing(turn));
                EXPECT_EQ(call.run(asking.handle()), 0u) << "the next call";
                EXPECT_EQ(footprint::now().descriptors - connected.descriptors, is_connected ? 0 : 1);
            }
            EXPECT_EQ(footprint::now(), before);
            if (!failed) return turn - 1;
        }
    }

    // Makes a call without memory. Returns whether it needed some.
    static bool fails(const exchange_call &call, mts_handle_t handle, call_range turns) {
        const faulty_heap heap(turns);
        const uint32_t status = call.run(handle);
        if (heap.failed() == 0) return false;
        EXPECT_THAT(status, testing::AnyOf(1u, uint32_t{ENOMEM}, PM_ERR_FAILURE, UINT32_MAX));
        return true;
    }
};

TEST_F(reading_heap_faults_test, end_functions_that_read_answers) { sweep(reading_calls()); }

TEST_F(heap_faults_test, end_functions_that_ask_no_service) { sweep(local_calls()); }

template <auto function, uint32_t expected>
bool tells_of_channel(const received_answers &) {
    return static_cast<uint32_t>(function(index_of("port-channel2"))) == expected;
}

TEST_F(database_heap_faults_test, end_functions_that_look_up_members) {
    constexpr std::array calls{
        exported_call{"pm_get_mts_sap.database", true, tells_of_channel<pm_get_mts_sap, PM_SAP_ETHERNET_CHANNEL>},
        exported_call{"pm_is_ether_channel.database", true, tells_of_channel<pm_is_ether_channel, 1>},
        exported_call{"pm_port_channel_type.database", true, tells_of_channel<pm_port_channel_type, 2>},
    };
    sweep(calls);
}

TEST_F(exchange_heap_faults_test, end_calls_on_a_fresh_handle) { sweep(false); }

TEST_F(exchange_heap_faults_test, end_calls_on_a_connected_handle) { sweep(true); }

TEST_F(exchange_heap_faults_test, end_the_opening_of_a_handle) {
    const footprint before = footprint::now();
    {
        const faulty_heap heap(call_range::only(1));
        EXPECT_EQ(mts_dev_open(), 0u);
        EXPECT_EQ(errno, ENOMEM);
    }
    EXPECT_EQ(footprint::now(), before);
    const client opened;
}

// The name of a function, without what is special about a call of it.
std::string function_of(std::string_view call) { return std::string(call.substr(0, call.find('.'))); }

TEST(exported_calls, are_all_that_the_library_promises) {
    std::set<std::string> called;
    for (const exchange_call &call : exchange_calls()) called.insert(function_of(call.name));
    for (const exported_call &call : reading_calls()) called.insert(function_of(call.name));
    for (const exported_call &call : local_calls()) called.insert(function_of(call.name));
    called.insert("pm_mts_recv_with_eintr");    // receives the answers to the send-only functions' requests
    called.insert("local_temp_string_buffer");  // no function

    std::ifstream promised(SOURCE_FOLDER "/tests/abi/promised_exports.txt");
    std::set<std::string> exports;
    for (std::string name; promised >> name;) exports.insert(name);
    EXPECT_EQ(called, exports);
}

}  // namespace
