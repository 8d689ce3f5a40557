// SPDX-License-Identifier: Apache-2.0
#include "output/printable_text.h"

#include <gtest/gtest.h>

namespace {

struct sample {
    std::string_view raw;
    std::string_view printable;
};

class printable_texts : public testing::TestWithParam<sample> {};

TEST_P(printable_texts, are_safe_on_a_terminal) {
    EXPECT_EQ(pmctl::printable_text(GetParam().raw), GetParam().printable);
}

#define BAD "\xef\xbf\xbd"

INSTANTIATE_TEST_SUITE_P(
    all, printable_texts,
    testing::Values(sample{"", ""}, sample{"plain ~", "plain ~"},
                    sample{"two\nlines\t\x1b[31m\x7f", "two?lines??[31m?"},
                    sample{"caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80", "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x98\x80"},
                    sample{"\xc2\x9b"
                           "31m",
                           "?31m"},
                    sample{"\xc2\xa0", "\xc2\xa0"},
                    sample{"\u200d\u200e\u200f\u2010|\u2027\u2028\u202e\u202f", "\u200d??\u2010|\u2027??\u202f"},
                    sample{"\u2065\u2066\u2069\u206a|\u061b\u061c\u061d", "\u2065??\u206a|\u061b?\u061d"},
                    sample{"a\xff"
                           "b",
                           "a" BAD "b"},
                    sample{"\x80", BAD}, sample{"\xc3", BAD}, sample{"\xc3(", BAD "("}, sample{"\xc0\xaf", BAD BAD},
                    sample{"\xe0\x80\x80", BAD BAD BAD}, sample{"\xed\xa0\x80", BAD BAD BAD},
                    sample{"\xf0\x80\x80\x80", BAD BAD BAD BAD}, sample{"\xf4\x90\x80\x80", BAD BAD BAD BAD},
                    sample{"\xf5", BAD}, sample{"\xe2\x82", BAD BAD}));

TEST(quoted_text, can_be_read_back_byte_by_byte) {
    EXPECT_EQ(pmctl::quoted_text(""), R"("")");
    EXPECT_EQ(pmctl::quoted_text("uplink to core"), R"("uplink to core")");
    EXPECT_EQ(pmctl::quoted_text(R"(a "b" \ c)"), R"("a \"b\" \\ c")");
    EXPECT_EQ(pmctl::quoted_text("\x01\n\x7f"), R"("\x01\x0a\x7f")");
    EXPECT_EQ(pmctl::quoted_text("caf\xc3\xa9 \xe2\x82\xac"), "\"caf\xc3\xa9 \xe2\x82\xac\"");
    EXPECT_EQ(pmctl::quoted_text("\xc2\x85"), R"("\xc2\x85")");
    EXPECT_EQ(pmctl::quoted_text("a\u202e\u2028"), R"("a\xe2\x80\xae\xe2\x80\xa8")");
    EXPECT_EQ(pmctl::quoted_text("a\xff\xe2\x82z"), R"("a\xff\xe2\x82z")");
}

}  // namespace
