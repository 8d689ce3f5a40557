// SPDX-License-Identifier: Apache-2.0
// What the client prints on a terminal, and what elsewhere.
#include <gmock/gmock.h>

#include <algorithm>
#include <optional>

#include "integration/pmctl/pmctl_runs.h"
#include "integration/pmctl/pseudo_terminal.h"
#include "integration/virtual_switch/virtual_switch_test.h"

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char *green = "\033[32m";
constexpr const char *any_sequence = "\033";

class pmctl_terminal : public runtime_dir_test {
  protected:
    void SetUp() override {
        if (!pseudo_terminal::exists_here()) GTEST_SKIP() << "this machine has no pseudo-terminals";
        terminal_.emplace(50, 70);
    }

    // What `pmctl show interface brief` prints on the terminal, with words before and options behind it.
    std::string brief_on_terminal(const std::string &environment, const std::string &options = "") {
        const auto run =
            shell("env -u COLUMNS -u NO_COLOR TERM=xterm " + environment + " " PMCTL " show interface brief " +
                  options + " >" + terminal_->path() + " && echo END >" + terminal_->path());
        EXPECT_EQ(run.status, 0) << run.messages;
        return terminal_->read_to("END\n");
    }

    // In characters.
    static size_t longest_line(const std::string &text) {
        size_t longest = 0;
        for (const std::string &line : lines_of(text)) {
            const auto begins = [](char byte) { return (static_cast<unsigned char>(byte) & 0xc0) != 0x80; };
            longest = std::max(longest, static_cast<size_t>(std::count_if(line.begin(), line.end(), begins)));
        }
        return longest;
    }

    virtual_switch_process switch_{fixed_switch};
    std::optional<pseudo_terminal> terminal_;
};

TEST_F(pmctl_terminal, has_colours) {
    EXPECT_THAT(brief_on_terminal(""), HasSubstr(green));
    EXPECT_THAT(brief_on_terminal("NO_COLOR="), HasSubstr(green));
    EXPECT_THAT(brief_on_terminal("NO_COLOR=1"), Not(HasSubstr(any_sequence)));
    EXPECT_THAT(brief_on_terminal("TERM=dumb"), Not(HasSubstr(any_sequence)));
    EXPECT_THAT(brief_on_terminal("", "--color never"), Not(HasSubstr(any_sequence)));
    EXPECT_THAT(brief_on_terminal("NO_COLOR=1", "--color=always"), HasSubstr(green));
}

TEST_F(pmctl_terminal, is_fitted) {
    const std::string whole = pmctl({"show", "interface", "brief"}).output;
    const size_t width = longest_line(whole);
    ASSERT_GT(width, 70u);
    EXPECT_EQ(brief_on_terminal("COLUMNS=" + std::to_string(width), "--color never"), whole + "END\n");
    const std::string fitted = brief_on_terminal("", "--color never");
    EXPECT_EQ(longest_line(fitted), 70u);
    EXPECT_THAT(fitted, HasSubstr("\u2026"));
    EXPECT_EQ(lines_of(fitted).size(), lines_of(whole).size() + 1);
}

TEST_F(pmctl_terminal, is_not_a_pipe) {
    const auto piped = shell("COLUMNS=20 TERM=xterm " PMCTL " show interface brief");
    EXPECT_THAT(piped.output, Not(HasSubstr(any_sequence)));
    EXPECT_THAT(piped.output, Not(HasSubstr("\u2026")));
    EXPECT_THAT(shell(PMCTL " show interface brief --color always").output, HasSubstr(green));
}

}  // namespace
