// SPDX-License-Identifier: Apache-2.0
#include "output/render.h"

#include <gtest/gtest.h>

#include "fixed_records.h"
#include "output/column_table.h"
#include "output/member_list.h"
#include "output/port_members.h"

namespace {

using pmctl::sheet;
using pmctl::tone;

std::string text_of(const pmctl::view &shown) { return pmctl::render(shown, {}); }

TEST(render, aligns_the_columns_of_a_table) {
    const sheet table{
        "Modules", {"Slot", "Model", "State"}, {{{"1"}, {"supervisor"}, {"ok"}}, {{"12"}, {"x"}, {"ok"}}}};
    EXPECT_EQ(text_of({{table}, {}}), R"(Modules
Slot  Model       State
1     supervisor  ok
12    x           ok
)");
}

TEST(render, aligns_the_values_of_all_lists) {
    const sheet first{"", {}, {{{"Name"}, {"fc1/1"}}, {{"Link"}}, {{"Speed"}, {"8000"}}}};
    const sheet second{"fc1/2", {}, {{{"Bandwidth"}, {"1"}}, {{"Link"}}, {{"MTU"}, {"2"}}}};
    EXPECT_EQ(text_of({{first, second}, {}}), R"(Name       fc1/1
Link
  Speed      8000

fc1/2
  Bandwidth  1
  Link
    MTU        2
)");
}

TEST(render, leaves_no_blanks_at_the_end_of_a_line) {
    const sheet table{"", {"A", "B", "C"}, {{{"1"}, {""}, {"3"}}, {{"1"}, {""}, {""}}, {{""}, {"2"}, {""}}}};
    EXPECT_EQ(text_of({{table}, {}}), "A  B  C\n1     3\n1\n   2\n");
}

TEST(render, takes_rows_of_any_length) {
    const sheet table{"", {"A", "B"}, {{{"1"}}, {{"1"}, {"2"}, {"three"}}}};
    EXPECT_EQ(text_of({{table}, {}}), "A  B\n1\n1  2  three\n");
}

TEST(render, leaves_sheets_without_rows_out) {
    const sheet empty{"Ports", {"A"}, {}};
    const sheet table{"", {"A"}, {{{"1"}}}};
    EXPECT_EQ(text_of({{empty}, {}}), "");
    EXPECT_EQ(text_of({{empty, table, empty}, {}}), "A\n1\n");
}

TEST(render, prints_text_as_it_stands) {
    EXPECT_EQ(text_of({{}, "{\n}\n"}), "{\n}\n");
    EXPECT_EQ(text_of({{{"", {"A"}, {{{"1"}}}}}, "end"}), "A\n1\nend");
}

tone brief_state_tone(uint8_t state) {
    pm_port_info_brief_t port = full_brief_port();
    port.oper_state = state;
    return pmctl::column_sheet(pmctl::brief_columns(),
                               pmctl::records_of(std::span<const pm_port_info_brief_t>(&port, 1)))
        .rows[0][3]
        .tone;
}

TEST(tones, follow_the_state_of_a_port) {
    EXPECT_EQ(brief_state_tone(1), tone::good);
    EXPECT_EQ(brief_state_tone(2), tone::bad);
    EXPECT_EQ(brief_state_tone(4), tone::plain);
    EXPECT_EQ(brief_state_tone(8), tone::good);
    EXPECT_EQ(brief_state_tone(16), tone::bad);
}

// The tone of every cell of this label in the list of a port.
std::vector<tone> tones_of(const pm_port_info_t &port, const char *label) {
    std::vector<tone> tones;
    const auto records = pmctl::records_of(std::span(&port, 1));
    for (const sheet &list : pmctl::member_sheets(pmctl::port_groups(), records))
        for (const auto &row : list.rows)
            if (row[0].text == label) tones.push_back(row.back().tone);
    return tones;
}

TEST(tones, are_those_of_both_states_in_full) {
    pm_port_info_t port = full_port();
    port.admin_state = 2;
    port.oper_state = 8;
    EXPECT_EQ(tones_of(port, "Admin state"), std::vector{tone::bad});
    EXPECT_EQ(tones_of(port, "State"), (std::vector{tone::plain, tone::good}));  // the heading, the member
    EXPECT_EQ(tones_of(port, "State reason"), std::vector{tone::plain});
}

}  // namespace
