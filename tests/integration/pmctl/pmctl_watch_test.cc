// SPDX-License-Identifier: Apache-2.0
// Watching the running virtual switch while it changes.
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <optional>
#include <thread>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/pmctl/pseudo_terminal.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class pmctl_watch : public runtime_dir_test {
  protected:
    // Programs inherit what is ignored, as a background job's SIGINT is.
    pmctl_watch() {
        std::signal(SIGINT, SIG_DFL);
        describe("up");
        switch_.emplace(chassis_file_);
    }

    // A chassis whose only port is in this state.
    void describe(const char *state) const {
        std::ofstream(chassis_file_) << "[chassis]\nname = \"tiny\"\ntype = 10\nslots = 1\n"
                                     << "[[module]]\nslot = 1\nkind = \"fc\"\nports = 1\nstate = \"" << state << "\"\n";
    }

    static std::vector<std::string> watching(const char *seconds, std::vector<std::string> more = {}) {
        more.insert(more.begin(), {PMCTL, "show", "interface", "brief", "--watch", seconds});
        return more;
    }

    static std::vector<std::string> on(const pseudo_terminal &terminal, const std::string &words) {
        return {"/bin/sh", "-c",
                "exec env -u COLUMNS -u NO_COLOR TERM=xterm " PMCTL " " + words + " >" + terminal.path()};
    }

    // The next line with this part, of a thousand; else nothing.
    static std::string line_with(const char *part, child_process &program,
                                 child_process::output from = child_process::standard_output) {
        for (int i = 0; i < 1000; ++i) {
            const std::string line = program.read_line(from);
            if (line.find(part) != std::string::npos) return line;
        }
        return {};
    }

    std::string chassis_file_ = directory_.file("chassis.toml");
    std::optional<virtual_switch_process> switch_;
};

TEST_F(pmctl_watch, marks_what_changes_on_the_switch) {
    child_process program(watching("0.1"));
    EXPECT_THAT(line_with("fc1/1", program), Not(HasSubstr("*")));
    EXPECT_EQ(program.read_line(child_process::standard_output), "");
    EXPECT_THAT(program.read_line(child_process::standard_output), StartsWith("Interface "));
    describe("shutdown");
    switch_->send(SIGHUP);
    EXPECT_THAT(line_with("*", program), AllOf(StartsWith("fc1/1 "), HasSubstr(" down*")));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_THAT(program.read_rest(child_process::standard_error), IsEmpty());
}

TEST_F(pmctl_watch, goes_on_without_a_switch) {
    child_process program(watching("0.1"));
    EXPECT_THAT(line_with("fc1/1", program), Not(IsEmpty()));
    switch_->send(SIGTERM);
    EXPECT_EQ(switch_->wait(), 0);
    EXPECT_THAT(line_with("pmctl: ", program, child_process::standard_error), HasSubstr("no switch is running in"));
    describe("shutdown");
    switch_.emplace(chassis_file_);
    EXPECT_THAT(line_with("*", program), StartsWith("fc1/1 "));
    program.send(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
}

TEST_F(pmctl_watch, leaves_a_signal_ignored_that_was_so_at_its_start) {
    std::signal(SIGINT, SIG_IGN);
    child_process program(watching("0.1"));
    EXPECT_THAT(line_with("fc1/1", program), Not(IsEmpty()));
    program.send(SIGINT);
    for (int i = 0; i < 3; ++i) EXPECT_THAT(line_with("fc1/1", program), Not(IsEmpty()));
    program.send(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
}

TEST_F(pmctl_watch, ends_while_the_switch_is_silent) {
    switch_->send(SIGSTOP);
    child_process program(watching("0.1"));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    program.send(SIGINT);
    const auto interrupted = std::chrono::steady_clock::now();
    EXPECT_EQ(program.wait(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - interrupted, std::chrono::seconds(2));
    EXPECT_THAT(program.read_rest(child_process::standard_error), IsEmpty());
    switch_->send(SIGCONT);
}

// The first answer is larger than a pipe.
TEST_F(pmctl_watch, ends_while_nobody_reads) {
    switch_.reset();
    switch_.emplace(director);
    child_process program({PMCTL, "show", "interface", "--json", "--watch", "0.1"});
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    program.send(SIGTERM);
    EXPECT_EQ(program.wait(), 0);
}

TEST_F(pmctl_watch, ends_with_its_reader) {
    const auto often = pipeline(PMCTL " show interface brief --watch 0.1 | head -n 4");
    EXPECT_EQ(often.status, 0);
    EXPECT_THAT(often.messages, IsEmpty());
    EXPECT_EQ(lines_of(often.output).size(), 4u);
    const auto rarely = pipeline(PMCTL " show interface brief --watch 1000 | head -n 1");
    EXPECT_EQ(rarely.status, 0);
    EXPECT_THAT(rarely.messages, IsEmpty());
}

// Nothing else is opened in the place of what the program was started without.
TEST_F(pmctl_watch, takes_standard_descriptors_that_are_closed) {
    const auto run = shell(PMCTL
                           " show interface brief --watch 0.1 <&- 2>&- >/dev/null & sleep 0.5; "
                           "readlink /proc/$!/fd/0 /proc/$!/fd/2; kill $! && wait $!");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "/dev/null\n/dev/null\n");
}

TEST_F(pmctl_watch, draws_over_a_terminal) {
    if (!pseudo_terminal::exists_here()) GTEST_SKIP() << "this machine has no pseudo-terminals";
    pseudo_terminal terminal(24, 80);
    child_process program(on(terminal, "show interface brief --watch 0.2"));
    const std::string end = "\033[J";
    EXPECT_THAT(terminal.read_to(end),
                AllOf(StartsWith("\033[H\033[KEvery 0.2s: pmctl show interface brief --watch 0.2"),
                      HasSubstr("\n\033[KInterface ")));
    EXPECT_THAT(terminal.read_to("\033[H"), AllOf(StartsWith("fc1/1 "), HasSubstr("\033[32mup\033[0m")));
    describe("shutdown");
    switch_->send(SIGHUP);
    const std::string change = "\033[31;7mdown\033[0m";
    EXPECT_THAT(terminal.read_to(change), testing::EndsWith(change));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 0);
    const std::string below = "\033[0m\n\033[J";
    EXPECT_THAT(terminal.read_to(below), testing::EndsWith(below));
}

TEST_F(pmctl_watch, draws_anew_when_the_terminal_is_resized) {
    if (!pseudo_terminal::exists_here()) GTEST_SKIP() << "this machine has no pseudo-terminals";
    pseudo_terminal terminal(24, 80);
    child_process program(on(terminal, "show interface --watch 86400"));
    EXPECT_THAT(terminal.read_to("\u2026 "), Not(IsEmpty()));
    EXPECT_THAT(terminal.read_to("more lines"), Not(IsEmpty()));
    terminal.resize(1, 80);
    program.send(SIGWINCH);
    EXPECT_THAT(terminal.read_to("more lines"), StartsWith("\033[H\033[J\u2026 "));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 0);
}

TEST_F(pmctl_watch, draws_nothing_more_in_a_pipe_when_the_terminal_is_resized) {
    child_process program(watching("86400"));
    EXPECT_THAT(line_with("fc1/1", program), Not(IsEmpty()));
    program.send(SIGWINCH);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 0);
    EXPECT_EQ(line_with("fc1/1", program), "");
}

// What breaks off there need not be put right.
TEST_F(pmctl_watch, ends_on_a_terminal_that_nobody_reads) {
    switch_.reset();
    switch_.emplace(director);
    if (!pseudo_terminal::exists_here()) GTEST_SKIP() << "this machine has no pseudo-terminals";
    pseudo_terminal terminal(2000, 80);
    child_process program(on(terminal, "show interface --watch 0.2"));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    program.send(SIGINT);
    EXPECT_EQ(program.wait(), 0);
    const std::string seen = terminal.read_what_is_there();
    EXPECT_THAT(seen, HasSubstr("Every 0.2s"));
    EXPECT_THAT(seen, Not(HasSubstr("\033[?")));
}

TEST_F(pmctl_watch, refuses_what_is_no_time) {
    for (const char *seconds : {"0", "0.05", "86401", "soon", "-"}) {
        const auto result = pmctl({"show", "interface", "--watch", seconds});
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_EQ(result.messages, std::string("pmctl: not a number of seconds from 0.1 to 86400: ") + seconds + "\n");
    }
}

}  // namespace
