// SPDX-License-Identifier: Apache-2.0
#include "output/fitted_widths.h"

#include <gtest/gtest.h>

namespace {

using pmctl::column_widths;
using pmctl::fitted_widths;

TEST(fitted_widths, are_those_of_the_content_where_it_fits) {
    EXPECT_EQ(fitted_widths({10, 20, 30}, 64), (column_widths{10, 20, 30}));
    EXPECT_EQ(fitted_widths({10, 20, 30}, 0), (column_widths{10, 20, 30}));
    EXPECT_EQ(fitted_widths({}, 10), (column_widths{}));
}

TEST(fitted_widths, take_from_the_widest_first) {
    EXPECT_EQ(fitted_widths({10, 20, 30}, 63), (column_widths{10, 20, 29}));
    EXPECT_EQ(fitted_widths({10, 20, 30}, 54), (column_widths{10, 20, 20}));
    EXPECT_EQ(fitted_widths({10, 20, 30}, 44), (column_widths{10, 15, 15}));
}

TEST(fitted_widths, keep_the_first_column_and_a_least_width) {
    EXPECT_EQ(fitted_widths({40, 20, 3}, 20), (column_widths{40, 4, 3}));
    EXPECT_EQ(fitted_widths({40}, 20), (column_widths{40}));
}

}  // namespace
