// SPDX-License-Identifier: Apache-2.0
#include "captured_stdout.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace support {
namespace {

constexpr size_t longest_after_failure = 200;

std::string read_from(int file, size_t offset) {
    std::string text;
    char buffer[4096];
    for (ssize_t size; (size = pread(file, buffer, sizeof buffer, static_cast<off_t>(offset + text.size()))) > 0;)
        text.append(buffer, static_cast<size_t>(size));
    return text;
}

}  // namespace

captured_stdout::captured_stdout() {
    std::fflush(stdout);
    terminal_ = dup(STDOUT_FILENO);
    file_ = memfd_create("stdout", MFD_CLOEXEC);
    dup2(file_, STDOUT_FILENO);
}

captured_stdout::~captured_stdout() {
    std::fflush(stdout);
    dup2(terminal_, STDOUT_FILENO);
    close(terminal_);
    if (testing::Test::HasFailure()) std::fputs(read_from(file_, 0).c_str(), stdout);
    close(file_);
}

std::string captured_stdout::take() {
    std::fflush(stdout);
    std::string text = read_from(file_, taken_);
    taken_ += text.size();
    // The report of a failure is in here, too. Whole, it would be part of the next one, which would grow without end.
    if (testing::Test::HasFailure()) text.resize(std::min(text.size(), longest_after_failure));
    return text;
}

}  // namespace support
