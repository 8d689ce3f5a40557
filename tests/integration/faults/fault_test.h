// SPDX-License-Identifier: Apache-2.0
// fault_test.h: what sweeps through faults share: one switch for all of them, and how to begin anew on it.
#ifndef TESTS_INTEGRATION_FAULTS_FAULT_TEST_H
#define TESTS_INTEGRATION_FAULTS_FAULT_TEST_H

#include <memory>
#include <string>

#include "exchange_calls.h"
#include "footprint.h"
#include "integration/virtual_switch/virtual_switch_test.h"

class fault_test : public testing::Test {
  protected:
    static void SetUpTestSuite() { start_switch(director); }
    static void TearDownTestSuite();

    static void start_switch(const std::string &chassis_file);

    // Names the run-time directory in another way than before, so that the chassis database that is open counts as
    // another switch's: the next look-up opens it anew.
    static void respell_runtime_dir();

    // The daemon lives, and holds as many descriptors as when it was ready: it sees that clients are gone soon.
    static void expect_daemon_as_before();

    // Tells a number in the test's log and in its report.
    static void report(const std::string &what, int number);
};

#endif
