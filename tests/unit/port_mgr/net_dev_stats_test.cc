// SPDX-License-Identifier: Apache-2.0
// The counters of a network interface, from texts in the place of the kernel's.
#include <array>
#include <cstdlib>
#include <cstring>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using words = std::array<uint32_t, 16>;
using columns = std::vector<std::string>;

const std::string headers =
    "Inter-|   Receive                                                |  Transmit\n"
    " face |bytes    packets errs drop fifo frame compressed multicast|bytes    packets errs drop fifo colls carrier "
    "compressed\n";

// The column, counted from 1, of each word.
constexpr std::array<size_t, 16> column_of_word{2, 10, 1, 9, 3, 11, 4, 12, 8, 7, 16, 6, 5, 15, 13, 14};

constexpr uint32_t rubbish = 0x5a5a5a5a;
constexpr words untouched = [] {
    words all{};
    all.fill(rubbish);
    return all;
}();

// Columns of distinct numbers.
columns some_columns(size_t count = 16) {
    columns all;
    for (size_t i = 1; i <= count; ++i) all.push_back(std::to_string(100 * i + i));
    return all;
}

std::string joined(const columns &all) {
    std::string text;
    for (const auto &column : all) text += " " + column;
    return text;
}

// The words of the columns of numbers that fit; columns that are missing are 0.
words words_of(const columns &all) {
    words expected{};
    for (size_t i = 0; i < expected.size(); ++i) {
        const size_t column = column_of_word[i];
        if (column <= all.size()) expected[i] = static_cast<uint32_t>(std::stoull(all[column - 1]));
    }
    return expected;
}

class net_dev_stats : public support::library_test {
  protected:
    net_dev_stats() { fill_stats(); }

    void fill_stats() { std::memset(&stats, 0x5a, sizeof stats); }

    // Asks a file with these lines behind the headers.
    int32_t get(const std::string &name, const std::string &lines) {
        fill_stats();
        net_dev.text = headers + lines;
        return pm_get_proc_net_dev_stats(name.c_str(), &stats);
    }

    [[nodiscard]] words result() const {
        words all{};
        static_assert(sizeof all == sizeof stats);
        std::memcpy(all.data(), &stats, sizeof all);
        return all;
    }

    void expect_found(const std::string &name, const std::string &lines, const words &expected) {
        EXPECT_EQ(get(name, lines), 0) << lines;
        EXPECT_EQ(result(), expected) << lines;
        EXPECT_EQ(support::call_log::take().back(), "fclose()");
    }

    void expect_not_found(const std::string &name, const std::string &lines) {
        EXPECT_EQ(get(name, lines), -1) << lines;
        EXPECT_EQ(result(), untouched) << lines;
        EXPECT_EQ(support::call_log::take().back(), "fclose()");
    }

    // How many lines the library has read.
    static long lines_read() {
        const auto log = support::call_log::take();
        return std::ranges::count(log, "fgets(512)");
    }

    pm_net_dev_stats_t stats;
};

// ---- columns

TEST_F(net_dev_stats, have_each_column_in_its_word) {
    EXPECT_EQ(get("lo", "    lo:" + joined(some_columns()) + "\n"), 0);
    EXPECT_EQ(result(), words_of(some_columns()));
    EXPECT_EQ(stats.rx_packets, 202U);
    EXPECT_EQ(stats.tx_compressed, 1616U);
    EXPECT_EQ(stats.collisions, 1414U);
    EXPECT_THAT(support::call_log::take(),
                ElementsAre("fopen(/proc/net/dev, r)", "fgets(512)", "fgets(512)", "fgets(512)", "fclose()"));
}

TEST_F(net_dev_stats, have_totals_cut_to_32_bits) {
    columns all = some_columns();
    all[0] = "4294967297";
    all[1] = "18446744073709551615";
    all[8] = "1311768467463790320";
    all[9] = "4294967296";
    expect_found("lo", "lo:" + joined(all), words_of(all));
    EXPECT_EQ(stats.rx_bytes, 1U);
    EXPECT_EQ(stats.rx_packets, 0xffffffffU);
    EXPECT_EQ(stats.tx_bytes, 0x9abcdef0U);
    EXPECT_EQ(stats.tx_packets, 0U);
}

// The other columns are read as long numbers, whatever their width on this machine.
TEST_F(net_dev_stats, have_other_columns_as_long_numbers_cut_to_32_bits) {
    for (const char *const number : {"2147483647", "4294967295", "4294967296", "4294967301", "-1", "-2147483648"}) {
        const auto expected = static_cast<uint32_t>(std::strtol(number, nullptr, 10));
        words all;
        all.fill(expected);
        const columns totals{"1", "2"};
        const columns others(6, number);
        for (size_t word : {2, 3}) all[word] = 1;
        for (size_t word : {0, 1}) all[word] = 2;
        expect_found("lo", "lo:" + joined(totals) + joined(others) + joined(totals) + joined(others), all);
    }
}

TEST_F(net_dev_stats, of_missing_columns_are_0) {
    for (size_t count = 0; count <= 16; ++count) {
        const columns all = some_columns(count);
        for (const char *const end : {"", " ", "\n", " \n"}) {
            expect_found("lo", "lo:" + joined(all) + end, words_of(all));
        }
    }
}

TEST_F(net_dev_stats, behind_a_column_that_is_no_number_are_0) {
    expect_found("lo", "lo: 101 202 x 404 505\n", words_of({"101", "202"}));
    expect_found("lo", "lo: none\n", words{});
    expect_found("lo", "lo: 101 202.5 303\n", words_of({"101", "202"}));
}

TEST_F(net_dev_stats, ignore_more_columns) {
    expect_found("lo", "lo:" + joined(some_columns(20)) + "\n", words_of(some_columns()));
}

TEST_F(net_dev_stats, need_no_blank_behind_the_colon_and_may_have_many) {
    expect_found("lo", "lo:101 202\n", words_of({"101", "202"}));
    expect_found("lo", "lo: \t  101 \t 202\n", words_of({"101", "202"}));
}

// ---- names

TEST_F(net_dev_stats, are_those_of_the_named_interface) {
    const std::string lines = "    lo: 1 2\n  eth0: 3 4\n eth1:   5 6\neth10: 7 8\n";
    expect_found("lo", lines, words_of({"1", "2"}));
    expect_found("eth0", lines, words_of({"3", "4"}));
    expect_found("eth1", lines, words_of({"5", "6"}));
    expect_found("eth10", lines, words_of({"7", "8"}));
    for (const char *const name : {"eth2", "eth", "e", "l", "lo0", "lo:", "eth0: 3", "ETH0", "Inter-", "face"}) {
        expect_not_found(name, lines);
    }
}

TEST_F(net_dev_stats, of_a_name_that_begins_an_earlier_one_are_not_found) {
    expect_not_found("eth1", "  eth10: 1 2\n  eth1: 3 4\n");
    expect_not_found("lo", "lo 1 2\nlo: 3 4\n");
    expect_not_found("lo", "lo\nlo: 3 4\n");
    expect_not_found("lo", "lo : 1 2\nlo: 3 4\n");
}

TEST_F(net_dev_stats, stop_at_the_first_line_that_begins_with_the_name) {
    EXPECT_EQ(get("eth1", "  eth10: 1 2\n  eth1: 3 4\n"), -1);
    EXPECT_EQ(lines_read(), 3);
    EXPECT_EQ(get("eth1", "  eth1: 1 2\n  eth1: 3 4\n"), 0);
    EXPECT_EQ(lines_read(), 3);
    EXPECT_EQ(result(), words_of({"1", "2"}));
}

TEST_F(net_dev_stats, of_a_name_behind_others_are_found) {
    expect_found("eth1", "xeth1: 9 9\n  eth: 9 9\n eth0: 9 9\n eth1: 3 4\n", words_of({"3", "4"}));
}

TEST_F(net_dev_stats, of_an_alias_are_read_from_its_number) {
    expect_found("eth0", "eth0:1: 5 6\n", words_of({"1"}));
    expect_found("eth0:1", "eth0:1: 5 6\n", words_of({"5", "6"}));
}

TEST_F(net_dev_stats, of_a_name_with_blanks_in_front_are_not_found) {
    for (const char *const name : {" lo", "  lo", "\tlo", " "}) expect_not_found(name, "  lo: 1 2\n");
}

TEST_F(net_dev_stats, skip_all_white_space_in_front_of_the_name) {
    expect_found("lo", " \t\v\f\r lo: 1 2\n", words_of({"1", "2"}));
    expect_found("lo", "\n   \n\nlo: 1 2\n", words_of({"1", "2"}));
    EXPECT_EQ(get("\n", "\nlo: 1 2\n"), -1);
    EXPECT_EQ(lines_read(), 5) << "the end of a line is no name";
}

TEST_F(net_dev_stats, take_names_as_they_are) {
    expect_found("%s%n", "%s%n: 1 2\n", words_of({"1", "2"}));
    expect_not_found(std::string(2000, 'l'), "lo: 1 2\n");
    const std::string long_name(400, 'l');
    expect_found(long_name, long_name + ": 1 2\n", words_of({"1", "2"}));
}

// ---- lines longer than the buffer

TEST_F(net_dev_stats, of_a_line_of_511_characters_are_found) {
    expect_found("lo", std::string(500, ' ') + "lo: 101 20\nlo: 9 9\n", words_of({"101", "20"}));
}

TEST_F(net_dev_stats, read_the_rest_of_a_longer_line_as_a_line) {
    expect_found("lo", std::string(511, 'x') + "  lo: 1 2\nlo: 9 9\n", words_of({"1", "2"}));
    expect_found("lo", std::string(520, ' ') + "  lo: 1 2\nlo: 9 9\n", words_of({"1", "2"}));
    expect_not_found("lo", std::string(510, ' ') + "lo: 1 2\n");
}

TEST_F(net_dev_stats, are_cut_where_the_line_is) {
    expect_found("lo", "lo:" + std::string(505, ' ') + "123456\n", words_of({"123"}));
}

TEST_F(net_dev_stats, take_a_long_header_for_two) {
    net_dev.text = std::string(511, 'x') + "y\nlo: 1 2\nlo: 3 4\n";
    EXPECT_EQ(pm_get_proc_net_dev_stats("lo", &stats), 0);
    EXPECT_EQ(result(), words_of({"1", "2"}));
}

// ---- texts and arguments that are none

TEST_F(net_dev_stats, discard_two_headers_whatever_they_hold) {
    net_dev.text = "lo: 1 2\nlo: 3 4\nlo: 5 6\n";
    EXPECT_EQ(pm_get_proc_net_dev_stats("lo", &stats), 0);
    EXPECT_EQ(result(), words_of({"5", "6"}));
}

TEST_F(net_dev_stats, of_a_text_without_interfaces_are_not_found) {
    for (const char *const text : {"", "lo: 1 2", "lo: 1 2\n", "lo: 1 2\nlo: 3 4", "lo: 1 2\nlo: 3 4\n"}) {
        net_dev.text = text;
        EXPECT_EQ(pm_get_proc_net_dev_stats("lo", &stats), -1) << text;
        EXPECT_EQ(support::call_log::take().back(), "fclose()");
    }
    EXPECT_EQ(result(), untouched);
}

TEST_F(net_dev_stats, of_an_unknown_name_read_all_lines_once) {
    EXPECT_EQ(get("eth9", "lo: 1 2\neth0: 3 4\n"), -1);
    EXPECT_EQ(lines_read(), 5);
}

TEST_F(net_dev_stats, need_the_file) {
    EXPECT_EQ(pm_get_proc_net_dev_stats("lo", &stats), -1);
    EXPECT_THAT(support::call_log::take(), ElementsAre("fopen(/proc/net/dev, r)"));
    EXPECT_EQ(result(), untouched);
}

TEST_F(net_dev_stats, need_a_name_and_a_record) {
    net_dev.text = headers + "lo: 1 2\n: 3 4\n";
    EXPECT_EQ(pm_get_proc_net_dev_stats(nullptr, &stats), -1);
    EXPECT_EQ(pm_get_proc_net_dev_stats("", &stats), -1);
    EXPECT_EQ(pm_get_proc_net_dev_stats("lo", nullptr), -1);
    EXPECT_EQ(pm_get_proc_net_dev_stats(nullptr, nullptr), -1);
    EXPECT_THAT(support::call_log::take(), IsEmpty());
    EXPECT_EQ(result(), untouched);
}

}  // namespace
