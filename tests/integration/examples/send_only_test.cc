// SPDX-License-Identifier: Apache-2.0
#include <signal.h>

#include <chrono>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::UnorderedElementsAre;

run_result send_only(std::vector<std::string> names) {
    names.insert(names.begin(), EXAMPLES "send_only");
    return run_program(names);
}

class send_only_requests : public runtime_dir_test {
  protected:
    virtual_switch_process switch_{fixed_switch};
};

TEST_F(send_only_requests, are_answered_in_any_order) {
    const auto result = send_only({"fc1/1", "Ethernet2/1", "fc1/9", "fc2/1", "port-channel2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(lines_of(result.output), UnorderedElementsAre("fc1/1: up", "Ethernet2/1: up", "fc1/9: down",
                                                              "fc2/1: status 0x4029000a", "port-channel2: up"));
}

TEST_F(send_only_requests, end_after_their_time) {
    const auto start = std::chrono::steady_clock::now();
    switch_.send(SIGSTOP);
    const auto result = send_only({"fc1/1", "Ethernet2/1"});
    switch_.send(SIGCONT);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "send_only: Connection timed out\n");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(send_only_requests, are_for_interfaces) {
    const auto result = send_only({"fc1/1", "what"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "send_only: not an interface: what\n");
    EXPECT_EQ(send_only({}).status, 2);
}

class send_only_without_a_switch : public runtime_dir_test {};

TEST_F(send_only_without_a_switch, tells_of_the_failure) {
    const auto result = send_only({"fc1/1"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "send_only: fc1/1: status 0x71\n");
}

}  // namespace
