// SPDX-License-Identifier: Apache-2.0
// The diagnostic page, with the values that SFF-8472 itself works out.
#include "sff8472/diagnostics.h"

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <vector>

namespace {

using sff8472::level;
using sff8472::quantity;
using sff8472::reading;
using sff8472::readings;

constexpr bool internally = false;
constexpr bool externally = true;

class page {
  public:
    page &word(size_t offset, int value) {
        bytes_[offset] = static_cast<uint8_t>(value >> 8);
        bytes_[offset + 1] = static_cast<uint8_t>(value);
        return *this;
    }
    page &number(size_t offset, float value) {
        const auto bits = std::bit_cast<uint32_t>(value);
        return word(offset, static_cast<int>(bits >> 16)).word(offset + 2, static_cast<int>(bits & 0xffff));
    }

    [[nodiscard]] reading read(quantity of, bool external) const {
        return sff8472::read_diagnostics(bytes_, external)[static_cast<size_t>(of)];
    }

  private:
    std::array<uint8_t, sff8472::diagnostic::page_size> bytes_{};
};

// Every quantity has a slope of 1 and no offset.
page neutral() { return page().word(76, 0x0100).word(80, 0x0100).word(84, 0x0100).word(88, 0x0100).number(68, 1.0F); }

TEST(internal_calibration, takes_the_page_as_it_is) {
    page of;
    for (int offset = 0; offset < 109; offset += 2) {
        if (offset < 108) of.word(offset, 0x0100 + offset);
    }
    const auto expect = [&](quantity quantity, int first, int value) {
        const reading found = of.read(quantity, internally);
        EXPECT_EQ(found.value, 0x0100 + value);
        EXPECT_EQ(found.high_alarm, 0x0100 + first);
        EXPECT_EQ(found.low_alarm, 0x0100 + first + 2);
        EXPECT_EQ(found.high_warning, 0x0100 + first + 4);
        EXPECT_EQ(found.low_warning, 0x0100 + first + 6);
    };
    expect(quantity::temperature, 0, 96);
    expect(quantity::voltage, 8, 98);
    expect(quantity::bias, 16, 100);
    expect(quantity::tx_power, 24, 102);
    expect(quantity::rx_power, 32, 104);
}

// The words of the standard's table of temperatures, in 1/256 degrees.
TEST(internal_calibration, has_signed_temperatures) {
    const std::pair<int, int> table[] = {
        {0x7fff, 32767}, {0x7d00, 125 * 256}, {0x1900, 25 * 256}, {0x0100, 256},        {0x00ff, 255},
        {0x0001, 1},     {0x0000, 0},         {0xffff, -1},       {0xff01, -255},       {0xff00, -256},
        {0xe700, -6400}, {0xd800, -40 * 256}, {0x8001, -32767},   {0x8000, -128 * 256},
    };
    for (const auto &[word, wanted] : table) {
        EXPECT_EQ(page().word(96, word).read(quantity::temperature, internally).value, wanted) << word;
        EXPECT_EQ(neutral().word(96, word).read(quantity::temperature, externally).value, wanted) << word;
    }
}

TEST(internal_calibration, has_unsigned_values_of_all_else) {
    for (const size_t offset : {98u, 100u, 102u, 104u}) {
        const auto of = static_cast<quantity>((offset - 96) / 2);
        EXPECT_EQ(page().word(offset, 0xffff).read(of, internally).value, 0xffff);
        EXPECT_EQ(neutral().word(offset, 0xffff).read(of, externally).value, 0xffff);
    }
}

// The words of the standard's table of slopes, on the reading 256.
TEST(external_calibration, counts_slopes_in_256ths) {
    const std::pair<int, int> table[] = {{0x0000, 0},   {0x0001, 1},     {0x00ff, 255},   {0x0100, 256},
                                         {0x0101, 257}, {0x01ff, 0x1ff}, {0x0200, 0x200}, {0xffff, 0xffff}};
    for (const auto &[slope, wanted] : table)
        EXPECT_EQ(page().word(88, slope).word(98, 256).read(quantity::voltage, externally).value, wanted) << slope;
}

// Each quantity has constants of its own.
TEST(external_calibration, takes_slope_and_offset_of_the_quantity) {
    page of;
    of.word(76, 0x0200).word(78, 10);    // bias
    of.word(80, 0x0300).word(82, 20);    // transmit power
    of.word(84, 0x0180).word(86, -256);  // temperature
    of.word(88, 0x0080).word(90, 40);    // voltage
    of.word(96, -1000).word(98, 30000).word(100, 2000).word(102, 3000);
    EXPECT_EQ(of.read(quantity::temperature, externally).value, -1000 * 3 / 2 - 256);
    EXPECT_EQ(of.read(quantity::voltage, externally).value, 15040);
    EXPECT_EQ(of.read(quantity::bias, externally).value, 4010);
    EXPECT_EQ(of.read(quantity::tx_power, externally).value, 9020);
    EXPECT_EQ(of.read(quantity::temperature, internally).value, -1000);
}

TEST(external_calibration, goes_for_thresholds_too) {
    page of;
    of.word(84, 0x0200).word(86, 5);
    of.word(0, 100).word(2, -100).word(4, 50).word(6, -50);
    const reading temperature = of.read(quantity::temperature, externally);
    EXPECT_EQ(temperature.high_alarm, 205);
    EXPECT_EQ(temperature.low_alarm, -195);
    EXPECT_EQ(temperature.high_warning, 105);
    EXPECT_EQ(temperature.low_warning, -95);
    of.number(68, 2.0F).word(32, 1000).word(34, 100).word(36, 900).word(38, 200);
    const reading power = of.read(quantity::rx_power, externally);
    EXPECT_EQ(power.high_alarm, 2000);
    EXPECT_EQ(power.low_alarm, 200);
    EXPECT_EQ(power.high_warning, 1800);
    EXPECT_EQ(power.low_warning, 400);
}

// The coefficient of the fourth power comes first.
TEST(external_calibration, has_a_polynomial_for_received_power) {
    const auto power = [](size_t coefficient, float value, int word) {
        return page().number(coefficient, value).word(104, word).read(quantity::rx_power, externally).value;
    };
    EXPECT_EQ(power(56, 0.5F, 10), 5000);
    EXPECT_EQ(power(60, 0.5F, 20), 4000);
    EXPECT_EQ(power(64, 0.25F, 200), 10000);
    EXPECT_EQ(power(68, 1.5F, 3000), 4500);
    EXPECT_EQ(power(72, 77.0F, 3000), 77);
    page all;
    all.number(56, 1.0F).number(60, -2.0F).number(64, 3.0F).number(68, -4.0F).number(72, 5.5F).word(104, 10);
    EXPECT_EQ(all.read(quantity::rx_power, externally).value, 10000 - 2000 + 300 - 40 + 6);
}

TEST(external_calibration, stays_within_what_the_quantity_can_have) {
    EXPECT_EQ(page().word(84, 0xffff).word(96, 0x7fff).read(quantity::temperature, externally).value, 32767);
    EXPECT_EQ(page().word(84, 0xffff).word(96, 0x8000).read(quantity::temperature, externally).value, -32768);
    EXPECT_EQ(page().word(88, 0xffff).word(98, 0xffff).read(quantity::voltage, externally).value, 65535);
    EXPECT_EQ(page().word(90, -7).read(quantity::voltage, externally).value, 0);
    for (const float coefficient : {1e30F, std::numeric_limits<float>::infinity()})
        EXPECT_EQ(page().number(68, coefficient).word(104, 9).read(quantity::rx_power, externally).value, 65535);
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(page().number(68, none).word(104, 9).read(quantity::rx_power, externally).value, 0);
    EXPECT_EQ(page().number(68, -1.0F).word(104, 9).read(quantity::rx_power, externally).value, 0);
}

TEST(calibration, is_told_by_one_bit) {
    EXPECT_TRUE(sff8472::is_externally_calibrated(0x58));
    EXPECT_FALSE(sff8472::is_externally_calibrated(0x68));
}

reading of_value(int32_t value) { return {value, 100, 80, 20, 10}; }

level level_of_value(int32_t value) { return level_of(sff8472::flags_of({of_value(value)}), quantity::temperature); }

TEST(level, is_normal_up_to_the_thresholds) {
    for (const int32_t value : {20, 50, 80}) EXPECT_EQ(level_of_value(value), level::normal) << value;
}

TEST(level, has_alarms_before_warnings) {
    EXPECT_EQ(level_of_value(81), level::high_warning);
    EXPECT_EQ(level_of_value(100), level::high_warning);
    EXPECT_EQ(level_of_value(101), level::high_alarm);
    EXPECT_EQ(level_of_value(19), level::low_warning);
    EXPECT_EQ(level_of_value(10), level::low_warning);
    EXPECT_EQ(level_of_value(9), level::low_alarm);
}

// Bytes 112 and 113, and 116 and 117: high and low of each quantity from the top bit on.
TEST(flags, have_a_bit_for_each_side_of_each_quantity) {
    for (size_t i = 0; i < sff8472::quantities; ++i) {
        readings all;
        all.fill(of_value(50));
        const int high = 0x8000 >> (2 * i);
        const auto expect = [&](int32_t value, int alarms, int warnings) {
            all[i] = of_value(value);
            EXPECT_EQ(flags_of(all).alarms, alarms) << i;
            EXPECT_EQ(flags_of(all).warnings, warnings) << i;
        };
        expect(50, 0, 0);
        expect(81, 0, high);
        expect(101, high, high);
        expect(19, 0, high >> 1);
        expect(9, high >> 1, high >> 1);
    }
}

TEST(level, reads_the_two_flags_of_each_quantity) {
    const level high_low[][2] = {{level::high_alarm, level::low_alarm}, {level::high_warning, level::low_warning}};
    for (int i = 0; i < 10; ++i) {
        const auto flag = static_cast<uint16_t>(0x8000 >> i);
        for (int each = 0; each < 5; ++each) {
            const auto of = static_cast<quantity>(each);
            const bool is_it = each == i / 2;
            EXPECT_EQ(sff8472::level_of({flag, 0}, of), is_it ? high_low[0][i % 2] : level::normal) << i << " " << each;
            EXPECT_EQ(sff8472::level_of({0, flag}, of), is_it ? high_low[1][i % 2] : level::normal) << i << " " << each;
        }
    }
}

TEST(level, takes_an_alarm_before_a_warning) {
    EXPECT_EQ(sff8472::level_of({0x4000, 0x8000}, quantity::temperature), level::low_alarm);
    EXPECT_EQ(sff8472::level_of({0x8000, 0xffff}, quantity::temperature), level::high_alarm);
    EXPECT_EQ(sff8472::level_of({0x3fff, 0xffff}, quantity::temperature), level::high_warning);
}

}  // namespace
