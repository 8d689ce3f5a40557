// SPDX-License-Identifier: Apache-2.0
#include "watch/drawing.h"

#include <gtest/gtest.h>

namespace {

using pmctl::screen_drawing;

TEST(screen_drawing, goes_over_what_is_there) {
    EXPECT_EQ(screen_drawing("one\n\ntwo\n", {.height = 24}), "\033[H\033[Kone\n\033[K\n\033[Jtwo");
    EXPECT_EQ(screen_drawing("", {.height = 24}), "\033[H\033[J");
}

TEST(screen_drawing, leaves_out_what_does_not_fit) {
    const std::string five = "1\n2\n3\n4\n5\n";
    const auto drawn = [five](unsigned height) { return screen_drawing(five, {.height = height}); };
    EXPECT_EQ(drawn(5), "\033[H\033[K1\n\033[K2\n\033[K3\n\033[K4\n\033[J5");
    EXPECT_EQ(drawn(3), "\033[H\033[K1\n\033[K2\n\033[J\u2026 3 more lines");
    EXPECT_EQ(drawn(2), "\033[H\033[K1\n\033[J\u2026 4 more lines");
    EXPECT_EQ(drawn(1), "\033[H\033[J\u2026 5 more lines");
}

TEST(screen_drawing, cuts_lines_that_are_wider_than_the_screen) {
    const pmctl::terminal screen{.height = 3, .columns = 6};
    EXPECT_EQ(screen_drawing("123456\n1234567\n", screen), "\033[H\033[K123456\n\033[J12345\u2026\033[0m");
    EXPECT_EQ(screen_drawing("1\n2\n3\n4\n", screen), "\033[H\033[K1\n\033[K2\n\033[J\u2026 2 m\u2026\033[0m");
}

TEST(screen_drawing, does_not_count_colours) {
    const pmctl::terminal screen{.height = 3, .columns = 6};
    EXPECT_EQ(screen_drawing("\033[32;7mup\033[0m  ab\n", screen), "\033[H\033[J\033[32;7mup\033[0m  ab");
    EXPECT_EQ(screen_drawing("ab  \033[31mdown\033[0m\n", screen), "\033[H\033[Jab  \033[31md\u2026\033[0m");
}

}  // namespace
