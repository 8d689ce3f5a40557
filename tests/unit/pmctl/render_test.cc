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

TEST(render, keeps_the_blanks_of_a_text) {
    const sheet table{"", {"A", "B"}, {{{"1"}, {"two "}}}};
    EXPECT_EQ(text_of({{table}, {}}), "A  B\n1  two \n");
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

const sheet two_ports{
    "",
    {"Interface", "Port channel", "State"},
    {{{"fc1/1"}, {"port-channel12"}, {"up", tone::good}}, {{"Ethernet2/7.100"}, {"-"}, {"down", tone::bad}}}};

TEST(colours, tell_good_from_bad) {
    EXPECT_EQ(pmctl::render({{two_ports}, {}}, {.colour = true}),
              "Interface        Port channel    State\n"
              "fc1/1            port-channel12  \033[32mup\033[0m\n"
              "Ethernet2/7.100  -               \033[31mdown\033[0m\n");
}

TEST(colours, show_what_changed) {
    const sheet list{"", {}, {{{"State"}, {"up", tone::good, true}}, {{"Speed"}, {"8000", tone::plain, true}}}};
    const sheet table{"", {"A", "B"}, {{{"1"}, {"no", tone::bad, true}}}};
    EXPECT_EQ(pmctl::render({{list, table}, {}}, {.colour = true}),
              "State  \033[32;7mup\033[0m\nSpeed  \033[7m8000\033[0m\n\nA  B\n1  \033[31;7mno\033[0m\n");
}

TEST(change_marks, take_the_place_of_colours) {
    const sheet list{"", {}, {{{"State"}, {"up", tone::good, true}}, {{"Speed"}, {"8000"}}}};
    const sheet table{
        "", {"A", "B", "C"}, {{{"1", tone::plain, true}, {"", tone::plain, true}, {"x"}}, {{"2"}, {"y"}, {"x"}}}};
    EXPECT_EQ(text_of({{list, table}, {}}), "State  up*\nSpeed  8000\n\nA  B  C\n1* *  x\n2  y  x\n");
}

TEST(tables, fit_the_terminal) {
    EXPECT_EQ(pmctl::render({{two_ports}, {}}, {.width = 34}),
              "Interface        Port chan\u2026  State\n"
              "fc1/1            port-chan\u2026  up\n"
              "Ethernet2/7.100  -           down\n");
    EXPECT_EQ(pmctl::render({{two_ports}, {}}, {.width = 10}),
              "Interface        Por\u2026  Sta\u2026\n"
              "fc1/1            por\u2026  up\n"
              "Ethernet2/7.100  -     down\n");
}

TEST(tables, keep_marks_and_colours_of_cells_that_are_cut) {
    sheet table{"", {"A", "B"}, {{{"1"}, {"port-channel12", tone::bad, true}}}};
    EXPECT_EQ(pmctl::render({{table}, {}}, {.width = 9}), "A  B\n1  port\u2026*\n");
    EXPECT_EQ(pmctl::render({{table}, {}}, {.colour = true, .width = 9}), "A  B\n1  \033[31;7mport-\u2026\033[0m\n");
}

TEST(tables, are_as_wide_with_marks_as_without) {
    sheet table{"", {"A", "B"}, {{{"fc1/1"}, {"1"}}, {{"fc1/2"}, {"22"}}}};
    EXPECT_EQ(text_of({{table}, {}}), "A      B\nfc1/1  1\nfc1/2  22\n");
    for (auto &row : table.rows)
        for (auto &cell : row) cell.changed = true;
    EXPECT_EQ(text_of({{table}, {}}), "A      B\nfc1/1* 1*\nfc1/2* 22*\n");
    EXPECT_EQ(pmctl::render({{table}, {}}, {.width = 10}), "A      B\nfc1/1* 1*\nfc1/2* 22*\n");
}

TEST(tables, align_characters_not_bytes) {
    const sheet table{"", {"A", "B"}, {{{"Z\u00fcrich"}, {"1"}}, {{"Berlin"}, {"2"}}}};
    EXPECT_EQ(text_of({{table}, {}}), "A       B\nZ\u00fcrich  1\nBerlin  2\n");
}

TEST(lists, are_never_cut) {
    const sheet list{"", {}, {{{"Description"}, {"a long one"}}}};
    EXPECT_EQ(pmctl::render({{list}, {}}, {.width = 5}), "Description  a long one\n");
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
