// SPDX-License-Identifier: Apache-2.0
#include "watch/drawing.h"

#include <gtest/gtest.h>

namespace {

using pmctl::screen_drawing;

TEST(screen_drawing, goes_over_what_is_there) {
    EXPECT_EQ(screen_drawing("one\n\ntwo\n", 24), "\033[?7l\033[Hone\033[K\n\033[K\ntwo\033[K\n\033[J\033[?7h");
}

TEST(screen_drawing, leaves_out_what_does_not_fit) {
    const std::string five = "1\n2\n3\n4\n5\n";
    EXPECT_EQ(screen_drawing(five, 6), "\033[?7l\033[H1\033[K\n2\033[K\n3\033[K\n4\033[K\n5\033[K\n\033[J\033[?7h");
    EXPECT_EQ(screen_drawing(five, 5),
              "\033[?7l\033[H1\033[K\n2\033[K\n3\033[K\n\u2026 2 more lines\033[K\n\033[J\033[?7h");
    EXPECT_EQ(screen_drawing(five, 2), "\033[?7l\033[H\u2026 5 more lines\033[K\n\033[J\033[?7h");
}

}  // namespace
