// SPDX-License-Identifier: Apache-2.0
#include "output/text_width.h"

#include <gtest/gtest.h>

namespace {

using pmctl::shortened;
using pmctl::text_width;

TEST(text_width, counts_columns) {
    EXPECT_EQ(text_width(""), 0u);
    EXPECT_EQ(text_width("fc1/1"), 5u);
    EXPECT_EQ(text_width("Z\xc3\xbcrich \xe2\x82\xac"), 8u);  // two and three bytes, a column each
    EXPECT_EQ(text_width("e\xcc\x81"), 1u);                   // an accent of its own
    EXPECT_EQ(text_width("\xe4\xb8\xad\xe6\x96\x87"), 4u);    // East Asian
    EXPECT_EQ(text_width("\xf0\x9f\x98\x80"), 2u);            // four bytes
    EXPECT_EQ(text_width("\xff\xff"), 2u);
    EXPECT_EQ(text_width("\xe4"), 1u);  // the rest is missing
    EXPECT_EQ(text_width("\033[32;7mup\033[0m"), 2u);
    EXPECT_EQ(text_width("\033[3"), 0u);
}

TEST(shortened, keeps_what_fits) {
    EXPECT_EQ(shortened("fc1/1", 5), "fc1/1");
    EXPECT_EQ(shortened("", 1), "");
    EXPECT_EQ(shortened("Z\xc3\xbcrich", 6), "Z\xc3\xbcrich");
}

TEST(shortened, cuts_between_characters) {
    EXPECT_EQ(shortened("port-channel12", 6), "port-\xe2\x80\xa6");
    EXPECT_EQ(shortened("port-channel12", 1), "\xe2\x80\xa6");
    EXPECT_EQ(shortened("Z\xc3\xbcrich", 3), "Z\xc3\xbc\xe2\x80\xa6");
    EXPECT_EQ(shortened("\xe4\xb8\xad\xe6\x96\x87", 3), "\xe4\xb8\xad\xe2\x80\xa6");
    EXPECT_EQ(shortened("\xe4\xb8\xad\xe6\x96\x87", 2), "\xe2\x80\xa6");  // no half of a wide one
    EXPECT_EQ(shortened("e\xcc\x81xyz", 2), "e\xcc\x81\xe2\x80\xa6");
}

}  // namespace
