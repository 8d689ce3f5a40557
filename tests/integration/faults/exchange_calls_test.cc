// SPDX-License-Identifier: Apache-2.0
// The calls that the tests of faults make are good when nothing fails.
#include "exchange_calls.h"

#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

TEST_F(virtual_switch_test, answers_every_exchange_call_again_and_again) {
    const virtual_switch_process daemon(director);
    for (int round = 0; round < 2; ++round) {
        for (const exchange_call &call : exchange_calls()) EXPECT_EQ(call.run(client_.handle()), 0u) << call.name;
    }
}

}  // namespace
