// SPDX-License-Identifier: Apache-2.0
// The report of a failed check. A get-next request without a handle, which is refused, makes one.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using scenario = support::fake_assertion_log::scenario;

constexpr const char *reported = "port_info_request.cc: pm_send_get_next_port_info";
constexpr size_t full = 0x100000;

class assertion : public support::library_test {
  protected:
    static uint32_t fail_a_check() {
        mts_msg_t request{};
        return pm_send_get_next_port_info(0, 0x01000000, &request);
    }

    // The log's text behind the first `count` NULs.
    [[nodiscard]] std::string text_behind_piece(int count) const {
        const std::string text = assertions.text();
        size_t begin = 0;
        for (; count > 0; --count) begin = text.find('\0', begin) + 1;
        return text.substr(begin);
    }
};

// A call from deep down, so that the stack has more frames than a report takes.
[[gnu::noinline]] uint32_t fail_a_check_below(int depth) {
    mts_msg_t request{};
    const uint32_t status = depth == 0 ? pm_send_get_next_port_info(0, 0, &request) : fail_a_check_below(depth - 1);
    asm volatile("" ::: "memory");
    return status;
}

TEST_F(assertion, appends_separator_check_and_backtrace) {
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    const std::string separator = "\n\n---------------------------------------------------------------\n";
    const std::string text = assertions.text();
    ASSERT_EQ(text.substr(0, separator.size() + 1), separator + '\0');
    const std::string check = text_behind_piece(1).c_str();
    EXPECT_THAT(check, MatchesRegex("ASSERT: [0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}: "
                                    "file infra/port_manager/lib/pm_api_common/port_info_request\\.cc, "
                                    "function pm_send_get_next_port_info, line [1-9][0-9]*, pid: " +
                                    std::to_string(getpid()) + " \n"));
    EXPECT_STREQ(text_behind_piece(2).c_str(), "\nBacktrace:\n");
    EXPECT_THAT(assertions.take(), ElementsAre(reported));
}

TEST_F(assertion, ends_each_of_three_pieces_with_a_nul) {
    fail_a_check();
    EXPECT_EQ(std::ranges::count(assertions.text(), '\0'), 3);
    assertions.take();
}

TEST_F(assertion, shows_a_frame_a_line) {
    fail_a_check();
    const std::string frames = text_behind_piece(3);
    EXPECT_THAT(frames, MatchesRegex("([^\n]+\\[0x[0-9a-f]+\\]\n){2,50}"));
    EXPECT_NE(frames.find("libport_mgr_common.so"), std::string::npos);
    assertions.take();
}

TEST_F(assertion, shows_at_most_50_frames) {
    EXPECT_EQ(fail_a_check_below(100), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(std::ranges::count(text_behind_piece(3), '\n'), 50);
    assertions.take();
}

TEST_F(assertion, is_dated_in_local_time) {
    setenv("TZ", "TST-7:30", 1);
    tzset();
    const time_t before = time(nullptr);
    fail_a_check();
    struct tm local {};
    const std::string stamp = text_behind_piece(1).substr(8, 19);
    ASSERT_NE(strptime(stamp.c_str(), "%Y-%m-%d %H:%M:%S", &local), nullptr) << stamp;
    const time_t written = mktime(&local);
    EXPECT_GE(written, before);
    EXPECT_LE(written, time(nullptr));
    unsetenv("TZ");
    tzset();
    assertions.take();
}

TEST_F(assertion, captures_the_stack_first_and_tells_the_system_log_last) {
    fail_a_check();
    const size_t check_size = text_behind_piece(1).find('\0') + 1;
    EXPECT_THAT(assertions.take_calls(), ElementsAre("backtrace(50)", "open(02101, 0600)", "fstat", "write(67)",
                                                     "write(" + std::to_string(check_size) + ")", "write(13)",
                                                     "backtrace_symbols_fd", "close", "syslog"));
    assertions.take();
}

TEST_F(assertion, tells_the_system_log_function_and_line) {
    fail_a_check();
    const std::string check = text_behind_piece(1).c_str();
    const std::string line = std::to_string(std::atoi(&check[check.find(", line ") + 7]));
    EXPECT_THAT(assertions.take_system_log(), ElementsAre("7 Exception at: pm_send_get_next_port_info/" + line));
    assertions.resize(0);
}

TEST_F(assertion, creates_the_log_for_its_owner_alone) {
    const mode_t mask = umask(0);
    fail_a_check();
    umask(mask);
    EXPECT_EQ(assertions.permissions(), 0600U);
    assertions.take();
}

TEST_F(assertion, appends_to_what_is_there) {
    assertions.resize(1000);
    fail_a_check();
    const size_t one_report = assertions.text().size() - 1000;
    EXPECT_EQ(assertions.text().substr(0, 1000), std::string(1000, '\0'));
    EXPECT_THAT(assertions.take(), ElementsAre(reported));
    fail_a_check();
    EXPECT_GE(assertions.text().size(), 1000 + 2 * one_report - 100);
    EXPECT_THAT(assertions.take(), ElementsAre(reported));
}

TEST_F(assertion, is_still_written_to_a_log_of_exactly_1_mib) {
    assertions.resize(full);
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    EXPECT_GT(assertions.text().size(), full);
    EXPECT_THAT(assertions.take(), ElementsAre(reported));
}

TEST_F(assertion, leaves_a_log_above_1_mib_and_the_system_log_alone) {
    assertions.resize(full + 1);
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(assertions.text().size(), full + 1);
    EXPECT_THAT(assertions.take_calls(), ElementsAre("backtrace(50)", "open(02101, 0600)", "fstat", "close"));
    EXPECT_THAT(assertions.take_system_log(), IsEmpty());
}

TEST_F(assertion, is_silent_without_a_log_folder) {
    assertions.set(scenario::missing_folder);
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take_calls(), ElementsAre("backtrace(50)", "open(02101, 0600)"));
    EXPECT_EQ(assertions.text(), "");
}

TEST_F(assertion, closes_a_log_whose_size_cannot_be_told) {
    assertions.set(scenario::no_status);
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    EXPECT_THAT(assertions.take_calls(), ElementsAre("backtrace(50)", "open(02101, 0600)", "fstat", "close"));
    EXPECT_EQ(assertions.text(), "");
}

TEST_F(assertion, takes_descriptor_0_for_a_failure) {
    const int standard_input = dup(STDIN_FILENO);
    const int file = open("/tmp", O_TMPFILE | O_RDWR, 0600);
    ASSERT_GT(file, 0);
    dup2(file, STDIN_FILENO);
    assertions.set(scenario::descriptor_0);
    EXPECT_EQ(fail_a_check(), PM_ERR_INVALID_PARAM);
    EXPECT_EQ(lseek(file, 0, SEEK_END), 0) << "something was written";
    EXPECT_NE(fcntl(STDIN_FILENO, F_GETFD), -1) << "standard input was closed";
    EXPECT_THAT(assertions.take_calls(), ElementsAre("backtrace(50)", "open(02101, 0600)"));
    dup2(standard_input, STDIN_FILENO);
    close(standard_input);
    close(file);
}

TEST_F(assertion, sends_nothing_and_prints_nothing) {
    fail_a_check();
    EXPECT_THAT(support::call_log::take(), IsEmpty());
    EXPECT_EQ(output.take(), "");
    assertions.take();
}

TEST_F(assertion, is_not_made_when_the_check_holds) {
    transport.will_send();
    mts_msg_t request{};
    EXPECT_EQ(pm_send_get_next_port_info(1, 0x01000000, &request), 0U);
    EXPECT_THAT(assertions.take_calls(), IsEmpty());
    transport.drop(request);
}

}  // namespace
