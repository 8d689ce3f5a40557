// SPDX-License-Identifier: Apache-2.0
// One exchange, in a program that the test lets run with another user's rights. Its run-time directory is that user's
// default: the environment is not believed.
#include "integration/transport/test_service.h"

using namespace transport_test;

int main() {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "x"), "x");
    return testing::Test::HasFailure() ? 1 : 0;
}
