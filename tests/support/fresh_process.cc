// SPDX-License-Identifier: Apache-2.0
#include "fresh_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace support {
namespace {

// An exception must not reach the test's own runner, which would go on with the other tests.
[[noreturn]] void run_and_exit(const std::function<void()> &part) noexcept {
    part();
    std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS);
}

}  // namespace

void in_fresh_process(const std::function<void()> &part) {
    std::fflush(stdout);
    const pid_t child = fork();
    ASSERT_NE(child, -1) << "fork";
    if (child == 0) run_and_exit(part);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "the process failed";
}

}  // namespace support
