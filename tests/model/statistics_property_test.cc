// SPDX-License-Identifier: Apache-2.0
// Counters of line cards and of the kernel.
#include <fmt/format.h>

#include <algorithm>

#include "naive_bytes.h"
#include "naive_statistics.h"
#include "property.h"
#include "record_members.h"

namespace {

using model::random_source;
using support::bytes;

constexpr size_t stats_size = 320;
constexpr size_t communication_status = 10;
constexpr size_t result_word = 24;

// Counters, most often good ones.
std::optional<bytes> random_counters(random_source &source) {
    if (source.one_in(20)) return {};
    bytes payload = source.some_bytes(stats_size);
    if (!source.one_in(8)) payload[communication_status] = payload[communication_status + 1] = 0;
    if (source.one_in(8)) std::fill_n(&payload[result_word], 4, uint8_t{0});
    if (source.one_in(8)) payload.resize(source.below(2 * stats_size), 0);
    return payload;
}

class ethernet_counters : public model::property {
  protected:
    void expect_counters(const std::optional<bytes> &payload, if_index_t interface) {
        transport.will_send();
        transport.will_receive_answer(payload);
        transport.will_drop();
        transport.will_drop();
        const auto expected = model::ethernet_counters(payload, interface);
        auto stats = model::untouched<pm_eth_stats_t>();
        EXPECT_EQ(pm_get_clear_eth_stats(model::handle, interface, interface, PM_ETH_STATS_READ, &stats),
                  expected.status);
        EXPECT_EQ(model::first_difference(expected.stats, stats), "");
        EXPECT_EQ(output.take(), expected.printed);
        EXPECT_EQ(take_reporters(), expected.reporters);
        support::call_log::take();
    }
};

TEST_F(ethernet_counters, are_those_that_the_model_finds_in_the_answer) {
    for_random_cases([this](random_source &source) {
        expect_counters(random_counters(source), 0x02000000 | source.below(0x10000));
    });
}

TEST_F(ethernet_counters, of_an_answer_cut_anywhere_are_refused) {
    for_random_cases(
        [this](random_source &source) {
            bytes payload = source.some_bytes(stats_size);
            // What the line card says about itself is seen in the first twelve bytes.
            payload[communication_status] = payload[communication_status + 1] = 0;
            for (; !payload.empty(); payload.pop_back()) expect_counters(payload, 0x02010200);
            expect_counters(payload, 0x02010200);
        },
        400);
}

std::string random_name(random_source &source) {
    std::string name;
    for (uint32_t rest = source.below(4); rest > 0; --rest) name += source.pick<char>({'e', '1', '0', ':', ' '});
    return name;
}

std::string random_column(random_source &source) {
    if (source.one_in(60)) return "-";
    if (source.one_in(60)) return "x";
    // What a long holds in every build.
    const int64_t number = source.word() & 0x7fffffff;
    return std::to_string(source.one_in(10) ? -number : number);
}

// Totals have 64 bits.
std::string random_total(random_source &source) {
    return std::to_string(source.word() & 0x7fffffffU) +
           (source.one_in(2) ? std::to_string(source.below(1000000)) : "");
}

std::string random_line(random_source &source) {
    std::string line(source.below(3), source.pick<char>({' ', ' ', ' ', '\t', '\v', '\f', '\r'}));
    line += random_name(source);
    if (!source.one_in(8)) line += ':';
    const uint32_t columns = source.one_in(4) ? source.below(20) : 16;
    for (uint32_t i = 0; i < columns; ++i) {
        const uint32_t spaces = source.one_in(100) ? 200 : source.below(3) + (i > 0 ? 1 : 0);
        line.append(spaces, source.one_in(8) ? '\t' : ' ');
        const bool is_total = i == 0 || i == 1 || i == 8 || i == 9;
        line += is_total && !source.one_in(40) ? random_total(source) : random_column(source);
    }
    return line;
}

std::string random_table(random_source &source) {
    std::string table;
    for (uint32_t rest = 2 + source.below(6); rest > 0; --rest) table += random_line(source) + '\n';
    if (source.one_in(6)) table.resize(1 + source.below(static_cast<uint32_t>(table.size())));
    return table;
}

using kernel_counters = model::property;

TEST_F(kernel_counters, are_those_that_the_model_finds_in_the_table) {
    for_random_cases([this](random_source &source) {
        const std::string table = random_table(source);
        net_dev.text = table;
        for (int i = 0; i < 8; ++i) {
            const std::string name = random_name(source);
            SCOPED_TRACE(fmt::format("'{}' in\n{}", name, table));
            const auto expected = model::net_dev_counters(table, name);
            auto stats = model::untouched<pm_net_dev_stats_t>();
            EXPECT_EQ(pm_get_proc_net_dev_stats(name.c_str(), &stats), expected.status);
            EXPECT_EQ(model::first_difference(expected.stats, stats), "");
        }
        support::call_log::take();
    });
}

}  // namespace
