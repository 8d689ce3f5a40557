// SPDX-License-Identifier: Apache-2.0
#include "fault_test.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

struct running_switch {
    explicit running_switch(const std::string &chassis_file) : daemon(chassis_file) {
        descriptors = daemon.descriptors();
    }

    temporary_runtime_dir directory;
    virtual_switch_process daemon;
    size_t descriptors;
};

std::unique_ptr<running_switch> running;

}  // namespace

void fault_test::start_switch(const std::string &chassis_file) {
    running = std::make_unique<running_switch>(chassis_file);
}

void fault_test::TearDownTestSuite() { running.reset(); }

void fault_test::respell_runtime_dir() {
    static bool with_slash = false;
    with_slash = !with_slash;
    setenv("MTS_RUNTIME_DIR", running->directory.file(with_slash ? "" : ".").c_str(), 1);
}

void fault_test::expect_daemon_as_before() {
    for (int attempt = 0; attempt < 1000 && running->daemon.descriptors() != running->descriptors; ++attempt) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_EQ(running->daemon.descriptors(), running->descriptors);
}

void fault_test::report(const std::string &what, int number) {
    RecordProperty(what, number);
    std::printf("%s: %d\n", what.c_str(), number);
}
