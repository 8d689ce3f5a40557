// SPDX-License-Identifier: Apache-2.0
#include "chassis/utf8.h"

#include <gtest/gtest.h>

namespace {

using virtual_switch::is_utf8;

TEST(utf8, has_characters_of_one_to_four_bytes) {
    for (const char *text : {"", "a\x7f", "\xc2\x80\xdf\xbf", "\xe0\xa0\x80\xed\x9f\xbf\xee\x80\x80\xef\xbf\xbf",
                             "\xf0\x90\x80\x80\xf4\x8f\xbf\xbf"})
        EXPECT_TRUE(is_utf8(text)) << text;
}

TEST(utf8, has_no_longer_forms_no_halves_and_nothing_beyond_the_last_character) {
    for (const char *text : {"\x80", "\xc1\xbf", "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf", "\xed\xa0\x80", "\xed\xbf\xbf",
                             "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xff", "\xc3z", "a\xe2\x82"})
        EXPECT_FALSE(is_utf8(text)) << text;
}

TEST(utf8, ends_where_the_text_ends) {
    const std::string_view euro = "\xe2\x82\xac";
    EXPECT_TRUE(is_utf8(euro));
    EXPECT_FALSE(is_utf8(euro.substr(0, 2)));
    EXPECT_FALSE(is_utf8(euro.substr(0, 1)));
}

}  // namespace
