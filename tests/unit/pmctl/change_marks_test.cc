// SPDX-License-Identifier: Apache-2.0
#include "watch/change_marks.h"

#include <gtest/gtest.h>

#include "output/render.h"

namespace {

using pmctl::row;
using pmctl::sheet;
using pmctl::view;

// The drawing that follows `before`, with '*' for the marks.
std::string marked(view now, const view &before) {
    pmctl::mark_changes(now, before);
    return pmctl::render(now, {});
}

view table(std::vector<row> rows) { return {{{"", {"Port", "State", "Speed"}, std::move(rows)}}, {}}; }

TEST(change_marks, are_at_the_cells_that_changed) {
    EXPECT_EQ(marked(table({{{"fc1/1"}, {"down"}, {"8000"}}, {{"fc1/2"}, {"up"}, {"8000"}}}),
                     table({{{"fc1/1"}, {"up"}, {"8000"}}, {{"fc1/2"}, {"up"}, {"4000"}}})),
              "Port   State  Speed\nfc1/1  down*  8000\nfc1/2  up     8000*\n");
}

TEST(change_marks, are_nowhere_when_nothing_changed) {
    const view same = table({{{"fc1/1"}, {"up"}, {"8000"}}});
    EXPECT_EQ(marked(same, same), "Port   State  Speed\nfc1/1  up     8000\n");
}

TEST(change_marks, follow_rows_that_moved) {
    EXPECT_EQ(marked(table({{{"fc1/2"}, {"up"}, {"1"}}, {{"fc1/1"}, {"up"}, {"2"}}}),
                     table({{{"fc1/1"}, {"up"}, {"2"}}, {{"fc1/3"}, {"up"}, {"3"}}, {{"fc1/2"}, {"down"}, {"1"}}})),
              "Port   State  Speed\nfc1/2  up*    1\nfc1/1  up     2\n");
}

TEST(change_marks, are_at_every_cell_of_a_new_row) {
    EXPECT_EQ(
        marked(table({{{"fc1/1"}, {"up"}, {"1"}}, {{"fc1/2"}, {"up"}, {"2"}}}), table({{{"fc1/1"}, {"up"}, {"1"}}})),
        "Port   State  Speed\nfc1/1  up     1\nfc1/2* up*    2*\n");
}

TEST(change_marks, compare_rows_of_one_name_in_their_order) {
    EXPECT_EQ(marked(table({{{"x"}, {"1"}}, {{"x"}, {"2"}}, {{"x"}, {"3"}}}), table({{{"x"}, {"1"}}, {{"x"}, {"0"}}})),
              "Port  State  Speed\nx     1\nx     2*\nx*    3*\n");
}

TEST(change_marks, are_at_cells_that_a_row_did_not_have) {
    EXPECT_EQ(marked(table({{{"x"}, {"1"}, {"2"}}}), table({{{"x"}, {"1"}}})), "Port  State  Speed\nx     1      2*\n");
    EXPECT_EQ(marked(table({{}, {{"x"}, {"1"}}}), table({{}, {{"x"}, {"1"}}})), "Port  State  Speed\n\nx     1\n");
}

sheet list(const char *title, const char *first, const char *second) {
    return {title, {}, {{{"Receive"}}, {{"Bytes"}, {first}}, {{"Send"}}, {{"Bytes"}, {second}}}};
}

TEST(change_marks, tell_lists_and_their_headings_apart) {
    EXPECT_EQ(marked({{list("fc1/1", "1", "5"), list("fc1/2", "3", "4")}, {}},
                     {{list("fc1/2", "3", "3"), list("fc1/1", "1", "2")}, {}}),
              "fc1/1\n  Receive\n    Bytes  1\n  Send\n    Bytes  5*\n\n"
              "fc1/2\n  Receive\n    Bytes  3\n  Send\n    Bytes  4*\n");
}

TEST(change_marks, know_a_row_by_its_heading_when_others_have_gone) {
    const sheet rest{"fc1/1", {}, {{{"Send"}}, {{"Bytes"}, {"5"}}}};
    EXPECT_EQ(marked({{rest}, {}}, {{list("fc1/1", "1", "5")}, {}}), "fc1/1\n  Send\n    Bytes  5\n");
}

TEST(change_marks, keep_tables_of_one_title_apart_by_order) {
    const auto two = [](const char *first, const char *second) {
        view both = table({{{"x"}, {first}}});
        both.sheets.push_back({"", {"Port", "State"}, {{{"x"}, {second}}}});
        return both;
    };
    EXPECT_EQ(marked(two("1", "3"), two("1", "2")), "Port  State  Speed\nx     1\n\nPort  State\nx     3*\n");
}

}  // namespace
