// SPDX-License-Identifier: Apache-2.0
// Each test moves descriptors about in a process of its own.
#include "output/own_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace {

constexpr int as_expected = 7;

void redirect_output_to(int descriptor) { dup2(descriptor, STDOUT_FILENO); }

std::string drain(int descriptor) {
    char bytes[256];
    const ssize_t length = read(descriptor, bytes, sizeof bytes);
    return {bytes, length < 0 ? 0 : static_cast<size_t>(length)};
}

// Reports what went wrong on standard error, where the test sees it.
[[noreturn]] void end_if_equal(const std::string &seen, const std::string &expected) {
    fprintf(stderr, "seen: %s\n", seen.c_str());
    _exit(seen == expected ? as_expected : 1);
}

TEST(own_output_test, keeps_the_diagnostics_of_others_away) {
    const auto child = [] {
        int ends[2];
        if (pipe(ends) != 0) _exit(2);
        redirect_output_to(ends[1]);
        pmctl::own_output output;
        printf("a diagnostic\n");
        fflush(stdout);
        if (!output.write("own words\n").empty()) _exit(3);
        end_if_equal(drain(ends[0]), "own words\n");
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

TEST(own_output_test, shows_diagnostics_on_standard_error_when_asked) {
    const auto child = [] {
        pmctl::own_output output;
        output.show_diagnostics();
        printf("a diagnostic\n");
        fflush(stdout);
        _exit(as_expected);
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "a diagnostic");
}

TEST(own_output_test, says_why_a_write_failed) {
    const auto child = [] {
        redirect_output_to(open("/dev/full", O_WRONLY));
        pmctl::own_output output;
        end_if_equal(output.write("words\n"), "cannot write the output: No space left on device");
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

TEST(own_output_test, says_that_there_is_no_standard_output) {
    const auto child = [] {
        close(STDOUT_FILENO);
        pmctl::own_output output;
        end_if_equal(output.write("words\n"), "cannot write the output: Bad file descriptor");
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

TEST(own_output_test, is_quiet_about_a_reader_that_has_gone) {
    const auto child = [] {
        signal(SIGPIPE, SIG_IGN);
        int ends[2];
        if (pipe(ends) != 0) _exit(2);
        redirect_output_to(ends[1]);
        close(ends[0]);
        pmctl::own_output output;
        end_if_equal(output.write("words\n"), "");
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

TEST(own_output_test, gives_up_when_a_signal_says_so) {
    const auto child = [] {
        int ends[2];
        if (pipe(ends) != 0) _exit(2);
        redirect_output_to(ends[1]);
        struct sigaction on_alarm {};
        on_alarm.sa_handler = [](int) {};
        sigaction(SIGALRM, &on_alarm, nullptr);
        ualarm(50'000, 0);
        pmctl::own_output output;
        end_if_equal(output.write(std::string(1'000'000, 'x'), [] { return true; }), "");
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

}  // namespace
