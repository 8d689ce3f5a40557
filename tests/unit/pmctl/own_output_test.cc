// SPDX-License-Identifier: Apache-2.0
// Each test moves descriptors about in a process of its own.
#include "output/own_output.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <string>
#include <thread>

namespace {

constexpr int as_expected = 7;

void redirect_output_to(int descriptor) { dup2(descriptor, STDOUT_FILENO); }

std::string drain(int descriptor) {
    char bytes[4096];
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

TEST(own_output_test, leaves_no_standard_descriptor_to_others) {
    const auto child = [] {
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(standard);
        pmctl::own_output output;
        int ends[2];
        if (pipe(ends) != 0) _exit(2);
        _exit(ends[0] > STDERR_FILENO && ends[1] > STDERR_FILENO && output.descriptor() < 0 ? as_expected : 1);
    };
    EXPECT_EXIT(child(), testing::ExitedWithCode(as_expected), "");
}

// More than a pipe holds.
const std::string long_text(200'000, 'x');

TEST(own_output_test, waits_for_a_reader_of_what_does_not_block) {
    const auto child = [] {
        int ends[2];
        if (pipe2(ends, O_NONBLOCK) != 0) _exit(2);
        redirect_output_to(ends[1]);
        std::string seen;
        std::thread reader([&seen, from = ends[0]] {
            for (pollfd readable{from, POLLIN, 0}; seen.size() < long_text.size() && poll(&readable, 1, 5000) == 1;)
                seen += drain(from);
        });
        pmctl::own_output output;
        const std::string failure = output.write(long_text);
        reader.join();
        end_if_equal(failure + std::to_string(seen.size()), std::to_string(long_text.size()));
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

volatile std::sig_atomic_t alarm_rang = 0;

TEST(own_output_test, gives_up_when_a_signal_says_so) {
    const auto child = [](int flags) {
        int ends[2];
        if (pipe2(ends, flags) != 0) _exit(2);
        redirect_output_to(ends[1]);
        struct sigaction on_alarm {};
        on_alarm.sa_handler = [](int) { alarm_rang = 1; };
        sigaction(SIGALRM, &on_alarm, nullptr);
        ualarm(50'000, 0);
        pmctl::own_output output;
        end_if_equal(output.write(long_text, [] { return alarm_rang != 0; }), "");
    };
    EXPECT_EXIT(child(0), testing::ExitedWithCode(as_expected), "");
    EXPECT_EXIT(child(O_NONBLOCK), testing::ExitedWithCode(as_expected), "");
}

}  // namespace
