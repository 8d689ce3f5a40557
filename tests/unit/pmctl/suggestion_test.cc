// SPDX-License-Identifier: Apache-2.0
#include "command_line/suggestion.h"

#include <gmock/gmock.h>

namespace {

using pmctl::nearest;
using testing::ElementsAre;
using testing::IsEmpty;

struct word_pair {
    const char *from;
    const char *to;
    size_t distance;
};

class word_pairs : public testing::TestWithParam<word_pair> {};

TEST_P(word_pairs, are_as_far_apart_as_it_takes_to_mend_one) {
    EXPECT_EQ(pmctl::edit_distance(GetParam().from, GetParam().to), GetParam().distance);
    EXPECT_EQ(pmctl::edit_distance(GetParam().to, GetParam().from), GetParam().distance);
}

INSTANTIATE_TEST_SUITE_P(all, word_pairs,
                         testing::Values(word_pair{"", "", 0}, word_pair{"", "show", 4}, word_pair{"show", "show", 0},
                                         word_pair{"SHOW", "show", 0}, word_pair{"shwo", "show", 1},
                                         word_pair{"shw", "show", 1}, word_pair{"sshow", "show", 1},
                                         word_pair{"shop", "show", 1}, word_pair{"hsow", "show", 1},
                                         word_pair{"hswo", "show", 2}, word_pair{"ehternet", "ethernet", 1},
                                         word_pair{"wohs", "show", 3}, word_pair{"ca", "abc", 3},
                                         word_pair{"kitten", "sitting", 3}, word_pair{"interface", "show", 9}));

struct typing {
    const char *word;
    std::vector<std::string> meant;
};

class typings : public testing::TestWithParam<typing> {};

TEST_P(typings, are_answered_with_the_nearest) {
    EXPECT_EQ(nearest(GetParam().word, {"show", "set", "clear", "interface", "port-channel", "fc", "--json", "--all"}),
              GetParam().meant);
}

INSTANTIATE_TEST_SUITE_P(all, typings,
                         testing::Values(typing{"shwo", {"show"}}, typing{"Shwo", {"show"}}, typing{"sohw", {"show"}},
                                         typing{"ste", {"set"}}, typing{"st", {"set"}}, typing{"claer", {"clear"}},
                                         typing{"cler", {"clear"}}, typing{"interfaces", {"interface"}},
                                         typing{"intrefcae", {"interface"}}, typing{"port_chanel", {"port-channel"}},
                                         typing{"fx", {"fc"}}, typing{"--jsno", {"--json"}}, typing{"-all", {"--all"}},
                                         // abbreviations, however short
                                         typing{"int", {"interface"}}, typing{"po", {"port-channel"}},
                                         typing{"sh", {"show"}}, typing{"--a", {"--all"}},
                                         // too far, or too short to tell
                                         typing{"", {}}, typing{"s", {}}, typing{"xyz", {}}, typing{"shut", {}},
                                         typing{"sxxw", {}}, typing{"intrfacsss", {}}, typing{"-", {}},
                                         typing{"--xml", {}}));

TEST(nearest, names_all_that_are_as_near_but_three_at_most) {
    EXPECT_THAT(nearest("shoe", {"show", "shop", "clear"}), ElementsAre("show", "shop"));
    EXPECT_THAT(nearest("shoe", {"shoed", "show"}), ElementsAre("shoed"));  // an abbreviation is nearer
    EXPECT_THAT(nearest("b1", {"a1", "c1", "d1", "e1"}), ElementsAre("a1", "c1", "d1"));
    EXPECT_THAT(nearest("show", {}), IsEmpty());
}

TEST(nearest, is_quick_about_words_that_cannot_be_meant) {
    EXPECT_THAT(nearest(std::string(1'000'000, 's'), {"show", "set"}), IsEmpty());
}

TEST(alternatives, are_listed_as_in_speech) {
    EXPECT_EQ(pmctl::alternatives({"a"}), "a");
    EXPECT_EQ(pmctl::alternatives({"a", "b"}), "a or b");
    EXPECT_EQ(pmctl::alternatives({"a", "b", "c"}), "a, b or c");
}

TEST(did_you_mean, has_another_end_when_nothing_is_near) {
    EXPECT_EQ(pmctl::did_you_mean("shoe", {"show", "shop"}, "; see --help"), "; did you mean show or shop?");
    EXPECT_EQ(pmctl::did_you_mean("xyzzy", {"show", "shop"}, "; see --help"), "; see --help");
}

}  // namespace
