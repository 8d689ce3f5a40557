// SPDX-License-Identifier: Apache-2.0
// test_service.h: a service that does as the opcode tells it, in a thread or in a process, and what clients of it need.
#ifndef TESTS_TRANSPORT_TEST_SERVICE_H
#define TESTS_TRANSPORT_TEST_SERVICE_H

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/mts.h"
#include "platform_dev/mts_handle.hpp"
#include "platform_dev/mts_service.h"
#include "support/other_user.h"

namespace transport_test {

inline constexpr uint32_t node = MTS_NODE_SUPERVISOR;
inline constexpr uint32_t sap = 43;
inline constexpr uint32_t fail_status = 0x40290009;

// What the test service does with a request.
enum opcode : uint32_t {
    echo = 1000,     // answers the payload
    stay_silent,     // does not answer
    answer_nothing,  // answers without payload
    answer_size,     // answers as many bytes as the first word says, each the low byte of its position
    lend_size,       // the same from a buffer of its own that the next such request finds changed
    refuse,          // fails with fail_status
    report_tail,     // answers one byte: 1 when the payload has its zeroed tail
    report_request,  // answers the words node, sap, opcode, is_cmi, kind and payload size
    report_sap,      // answers the SAP
    report_client,   // answers the client's user and then its groups
    die,             // ends the process without answering
};

// A private run-time directory that lasts as long as the test.
class transport : public testing::Test {
  protected:
    transport();
    ~transport() override;
    const std::string &directory() const { return directory_; }
    std::string file(std::string_view name) const { return directory_ + "/" + std::string(name); }

  private:
    std::string directory_;
};

// A server with one test service for each SAP.
class test_server {
  public:
    explicit test_server(const std::vector<uint32_t> &saps = {sap});
    test_server(const test_server &) = delete;
    test_server &operator=(const test_server &) = delete;
    ~test_server() { mts_server_destroy(server_); }
    mts_server_t *get() const { return server_; }

  private:
    mts_server_t *server_;
};

// Serves on a thread until it goes.
class service_thread {
  public:
    explicit service_thread(const std::vector<uint32_t> &saps = {sap});
    ~service_thread();

  private:
    test_server server_;
    std::thread thread_;
};

// Serves in a process of its own, reachable once it is constructed, until it is killed or goes.
class service_process {
  public:
    // As this user, unless it is null.
    explicit service_process(const support::other_user *user = nullptr);
    service_process(const service_process &) = delete;
    service_process &operator=(const service_process &) = delete;
    ~service_process() { kill_now(); }
    void kill_now();
    void wait_for_end();

  private:
    pid_t pid_ = -1;
};

class open_handle {
  public:
    open_handle() { EXPECT_NE(handle_.get(), 0u); }
    operator mts_handle_t() const { return handle_.get(); }

  private:
    platform_dev::mts_handle handle_;
};

// Sends a request and returns its token after dropping its record; 0 when the send failed.
uint32_t send_request(mts_handle_t handle, uint32_t opcode, std::string_view payload = {}, uint32_t to_sap = sap);

mts_recv_options_t answer_to(uint32_t token, uint32_t seconds = 10);

// The payload of the answer to the request, which is dropped; fails the test when none came.
std::string receive_answer(mts_handle_t handle, uint32_t token, uint32_t seconds = 10);

// The error number of a receive that is to fail; 0 when it did not.
uint32_t receive_error(mts_handle_t handle, uint32_t token, uint32_t seconds = 10);

std::string exchange(mts_handle_t handle, uint32_t opcode, std::string_view payload = {}, uint32_t to_sap = sap);

// `size` bytes, each the low byte of its position.
std::string pattern(size_t size);

// A word as it lies in memory.
std::string word(uint32_t value);

bool has_zeroed_tail(const void *payload, uint32_t size);

size_t count_open_descriptors();

}  // namespace transport_test

#endif
