// SPDX-License-Identifier: Apache-2.0
// What the diagnostic page reads at a moment.
#include "chassis/transceiver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "names.h"
#include "protocol/byte_order.h"

namespace {

using namespace std::chrono_literals;
using virtual_switch::diagnostics_at;
using virtual_switch::optical_link;
using virtual_switch::switch_time;
using virtual_switch::transceiver;

constexpr optical_link lit{true, true};
constexpr size_t temperature = 0;
constexpr size_t voltage = 1;
constexpr size_t bias = 2;
constexpr size_t tx_power = 3;
constexpr size_t rx_power = 4;

transceiver steady(uint8_t type) {
    transceiver made;
    made.has_diagnostics = true;
    made.serial_id[92] = type;
    for (size_t i = 0; i < made.diagnostics.size(); ++i) made.diagnostics[i] = static_cast<uint8_t>(i + 1);
    for (size_t i = 0; i < 5; ++i) pm::store_be16(&made.diagnostics[96 + 2 * i], static_cast<uint16_t>(1000 * (i + 1)));
    return made;
}

uint16_t word(const transceiver &of, size_t quantity, switch_time now, if_index_t if_index = 0,
              optical_link link = lit) {
    return pm::load_be16(&diagnostics_at(of, if_index, link, now)[96 + 2 * quantity]);
}

constexpr uint8_t internal = 0x68;
constexpr uint8_t external = 0x58;

TEST(readings, stay_without_a_drift) {
    const transceiver of = steady(internal);
    EXPECT_EQ(diagnostics_at(of, 7, lit, 0s), of.diagnostics);
    EXPECT_EQ(diagnostics_at(of, 7, lit, 12345s), of.diagnostics);
}

// The interface index 0 begins in the middle.
TEST(readings, swing_evenly_to_both_sides) {
    transceiver of = steady(internal);
    of.drifts[voltage] = {100, 400};
    const std::pair<switch_time, uint16_t> table[] = {{0s, 2000},   {50s, 2050},  {100s, 2100}, {150s, 2050},
                                                      {200s, 2000}, {250s, 1950}, {300s, 1900}, {350s, 1950},
                                                      {400s, 2000}, {500s, 2100}, {1ms, 2000},  {25500ms, 2026}};
    for (const auto &[now, wanted] : table) EXPECT_EQ(word(of, voltage, now), wanted) << now.count();
    EXPECT_EQ(word(of, temperature, 100s), 1000);
    EXPECT_EQ(word(of, bias, 100s), 3000);
}

TEST(readings, change_nothing_else_of_the_page) {
    transceiver of = steady(internal);
    of.drifts.fill({50, 400});
    const auto page = diagnostics_at(of, 0, lit, 100s);
    for (size_t i = 0; i < page.size(); ++i) {
        if (i < 96 || i > 105) {
            EXPECT_EQ(page[i], of.diagnostics[i]) << i;
        }
    }
    for (size_t i = 0; i < 5; ++i) EXPECT_NE(word(of, i, 100s), word(of, i, 0s));
}

TEST(readings, are_elsewhere_on_each_interface) {
    transceiver of = steady(internal);
    of.drifts[voltage] = {1000, 400};
    std::set<uint16_t> words;
    for (if_index_t if_index = 0x01000000; if_index < 0x01010000; if_index += 0x1000) {
        words.insert(word(of, voltage, 0s, if_index));
        EXPECT_EQ(word(of, voltage, 0s, if_index), word(of, voltage, 400s, if_index));
    }
    EXPECT_EQ(words.size(), 16u);
    EXPECT_LT(*words.begin(), 1300);
    EXPECT_GT(*words.rbegin(), 2700);
}

TEST(readings, of_powers_drift_in_decibels) {
    transceiver of = steady(internal);
    of.drifts[tx_power] = {3, 400};
    of.drifts[rx_power] = {10, 400};
    EXPECT_EQ(word(of, tx_power, 100s), 7981);  // twice 4000, nearly
    EXPECT_EQ(word(of, tx_power, 300s), 2005);
    EXPECT_EQ(word(of, rx_power, 100s), 50000);
    EXPECT_EQ(word(of, rx_power, 300s), 500);
}

// What the host multiplies by two swings half as far in the page.
TEST(readings, drift_as_words_that_the_host_calibrates) {
    transceiver of = steady(external);
    for (size_t i = 0; i < 4; ++i) pm::store_be16(&of.diagnostics[76 + 4 * i], 0x0100);
    pm::store_be16(&of.diagnostics[88], 0x0200);
    pm::store_be16(&of.diagnostics[76], 0x0080);
    of.drifts.fill({100, 400});
    EXPECT_EQ(word(of, temperature, 100s), 1100);
    EXPECT_EQ(word(of, voltage, 100s), 2050);
    EXPECT_EQ(word(of, bias, 100s), 3200);
    pm::store_be16(&of.diagnostics[88], 0);
    EXPECT_EQ(word(of, voltage, 100s), 2000);
}

TEST(readings, stay_within_a_word) {
    transceiver of = steady(internal);
    of.drifts.fill({60000, 400});
    EXPECT_EQ(word(of, temperature, 100s), 0x7fff);
    EXPECT_EQ(word(of, temperature, 300s), 0x8000);
    EXPECT_EQ(word(of, voltage, 300s), 0);
    EXPECT_EQ(word(of, rx_power, 100s), 0xffff);
    pm::store_be16(&of.diagnostics[96], 0xff00);
    of.drifts[temperature] = {100, 400};
    EXPECT_EQ(word(of, temperature, 100s), 0xff64);
}

TEST(readings, are_dark_without_light) {
    transceiver of = steady(internal);
    of.drifts.fill({1, 400});
    constexpr optical_link deaf{true, false};
    constexpr optical_link mute{false, true};
    EXPECT_EQ(word(of, rx_power, 100s, 0, deaf), 0);
    EXPECT_NE(word(of, tx_power, 100s, 0, deaf), 0);
    EXPECT_NE(word(of, bias, 100s, 0, deaf), 0);
    EXPECT_NE(word(of, rx_power, 100s, 0, mute), 0);
    EXPECT_EQ(word(of, tx_power, 100s, 0, mute), 0);
    EXPECT_EQ(word(of, bias, 100s, 0, mute), 0);
    EXPECT_EQ(word(of, temperature, 100s, 0, mute), 1001);
    EXPECT_EQ(word(of, voltage, 100s, 0, mute), 2001);
}

// -------------------------------------------------------------------------------------------------- links of a port

optical_link link_of(const std::string &settings) {
    const auto model = virtual_switch::parse_chassis(
        "[chassis]\nname = 'test'\ntype = 6\nslots = 1\n[[module]]\nslot = 1\nkind = 'fc'\nports = 1\n" + settings);
    return model.find(index_of("fc1/1"))->link();
}

TEST(link, follows_the_state_of_the_port) {
    const auto expect = [](const std::string &settings, bool is_transmitting, bool has_light) {
        EXPECT_EQ(link_of(settings).is_transmitting, is_transmitting) << settings;
        EXPECT_EQ(link_of(settings).has_light, has_light) << settings;
    };
    expect("", true, true);
    expect("state = 'down'", true, false);
    expect("state = 'down'\nstate_reason = 83", true, false);
    expect("state = 'down'\nstate_reason = 'isolated'", true, true);
    expect("state = 'error-disabled'", true, true);
    expect("state = 'trunking'\nstate_reason = 'notConnected'", true, true);
    expect("state = 'shutdown'", false, true);
    expect("state = 'down'\nadmin_state = 'down'", false, false);
}

}  // namespace
