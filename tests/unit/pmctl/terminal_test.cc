// SPDX-License-Identifier: Apache-2.0
// Against a pseudo-terminal.
#include "output/terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>

namespace {

class terminal_at : public testing::Test {
  protected:
    void SetUp() override {
        master_ = posix_openpt(O_RDWR | O_NOCTTY);
        if (master_ < 0) GTEST_SKIP() << "this machine has no pseudo-terminals";
        ASSERT_EQ(grantpt(master_) + unlockpt(master_), 0);
        screen_ = open(ptsname(master_), O_RDWR | O_NOCTTY);
        ASSERT_GE(screen_, 0);
        const winsize size{50, 120, 0, 0};
        ASSERT_EQ(ioctl(screen_, TIOCSWINSZ, &size), 0);
        for (const char *name : {"COLUMNS", "NO_COLOR"}) unsetenv(name);
        setenv("TERM", "xterm", 1);
        ASSERT_EQ(pipe(pipe_), 0);
    }

    void TearDown() override {
        for (const int each : {screen_, master_, pipe_[0], pipe_[1]}) close(each);
        for (const char *name : {"COLUMNS", "NO_COLOR", "TERM"}) unsetenv(name);
    }

    int master_ = -1;
    int screen_ = -1;
    int pipe_[2] = {-1, -1};
};

TEST_F(terminal_at, knows_a_screen) {
    const auto found = pmctl::terminal_at(screen_, "");
    EXPECT_TRUE(found.colour);
    EXPECT_EQ(found.width, 120u);
    EXPECT_EQ(found.height, 50u);
    EXPECT_EQ(found.columns, 120u);
}

TEST_F(terminal_at, limits_nothing_elsewhere) {
    setenv("COLUMNS", "80", 1);
    for (const int elsewhere : {pipe_[1], -1}) {
        const auto found = pmctl::terminal_at(elsewhere, "auto");
        EXPECT_FALSE(found.colour);
        EXPECT_EQ(found.width, 0u);
        EXPECT_EQ(found.height, 0u);
        EXPECT_EQ(found.columns, 0u);
    }
}

TEST_F(terminal_at, believes_columns_when_it_is_a_positive_number) {
    setenv("COLUMNS", "72", 1);
    EXPECT_EQ(pmctl::terminal_at(screen_, "").width, 72u);
    EXPECT_EQ(pmctl::terminal_at(screen_, "").columns, 120u);
    for (const char *nonsense : {"", "0", "-5", "80x", "wide", " 80", "99999999999"}) {
        setenv("COLUMNS", nonsense, 1);
        EXPECT_EQ(pmctl::terminal_at(screen_, "").width, 120u) << nonsense;
    }
}

TEST_F(terminal_at, has_no_colour_where_it_is_not_wanted) {
    setenv("NO_COLOR", "", 1);
    EXPECT_TRUE(pmctl::terminal_at(screen_, "").colour);
    setenv("NO_COLOR", "0", 1);
    EXPECT_FALSE(pmctl::terminal_at(screen_, "").colour);
    EXPECT_FALSE(pmctl::terminal_at(screen_, "auto").colour);
    unsetenv("NO_COLOR");
    setenv("TERM", "dumb", 1);
    EXPECT_FALSE(pmctl::terminal_at(screen_, "").colour);
}

TEST_F(terminal_at, obeys_the_option_before_all_else) {
    EXPECT_FALSE(pmctl::terminal_at(screen_, "never").colour);
    EXPECT_TRUE(pmctl::terminal_at(pipe_[1], "always").colour);
    setenv("NO_COLOR", "1", 1);
    setenv("TERM", "dumb", 1);
    EXPECT_TRUE(pmctl::terminal_at(screen_, "always").colour);
}

TEST_F(terminal_at, draws_nothing_anew_on_a_dumb_one_but_fits_it) {
    setenv("TERM", "dumb", 1);
    const auto found = pmctl::terminal_at(screen_, "");
    EXPECT_EQ(found.height, 0u);
    EXPECT_EQ(found.width, 120u);
}

TEST_F(terminal_at, takes_a_screen_without_a_size_as_it_can) {
    const winsize size{};
    ASSERT_EQ(ioctl(screen_, TIOCSWINSZ, &size), 0);
    const auto found = pmctl::terminal_at(screen_, "");
    EXPECT_EQ(found.width, 0u);
    EXPECT_EQ(found.height, 24u);
}

}  // namespace
