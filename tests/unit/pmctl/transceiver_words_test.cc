// SPDX-License-Identifier: Apache-2.0
#include "output/transceiver_words.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using pmctl::dbm;
using pmctl::measured_quantities;
using pmctl::quantity_text;
using sff8472::level;
using sff8472::quantity;
using testing::ElementsAre;
using testing::IsEmpty;

std::string text_of(quantity of, int32_t number) {
    return quantity_text(measured_quantities[static_cast<size_t>(of)], number);
}

TEST(metres_text, is_honest_about_what_is_beyond_the_page) {
    EXPECT_EQ(pmctl::metres_text({"OM3 fibre", 150, false}), "150");
    EXPECT_EQ(pmctl::metres_text({"OM3 fibre", 2540, true}), ">2540");
}

TEST(measured_quantities, stand_in_the_order_of_the_page) {
    for (size_t i = 0; i < measured_quantities.size(); ++i)
        EXPECT_EQ(static_cast<size_t>(measured_quantities[i].of), i);
}

TEST(quantity_text, is_in_the_units_of_people) {
    EXPECT_EQ(text_of(quantity::temperature, 35 * 256 + 64), "35.25");
    EXPECT_EQ(text_of(quantity::temperature, -10 * 256 - 128), "-10.50");
    EXPECT_EQ(text_of(quantity::voltage, 32989), "3.299");
    EXPECT_EQ(text_of(quantity::bias, 3123), "6.246");
    EXPECT_EQ(text_of(quantity::tx_power, 5012), "-3.00/0.5012");
    EXPECT_EQ(text_of(quantity::rx_power, 10000), "0.00/1.0000");
    EXPECT_EQ(text_of(quantity::rx_power, 20000), "3.01/2.0000");
}

TEST(quantity_text, has_no_level_of_no_power) {
    EXPECT_EQ(text_of(quantity::rx_power, 0), "-/0.0000");
    EXPECT_EQ(text_of(quantity::tx_power, 1), "-40.00/0.0001");
}

TEST(quantity_text, holds_extremes) {
    EXPECT_EQ(text_of(quantity::temperature, -32768), "-128.00");
    EXPECT_EQ(text_of(quantity::temperature, 32767), "128.00");
    EXPECT_EQ(text_of(quantity::temperature, std::numeric_limits<int32_t>::min()), "-8388608.00");
    EXPECT_EQ(text_of(quantity::voltage, 65535), "6.553");
    EXPECT_EQ(text_of(quantity::bias, 65535), "131.070");
    EXPECT_EQ(text_of(quantity::tx_power, 65535), "8.16/6.5535");
    EXPECT_EQ(text_of(quantity::rx_power, std::numeric_limits<int32_t>::max()), "53.32/214748.3647");
}

TEST(dbm, is_a_number_to_hundredths) {
    EXPECT_EQ(dbm(10), -30.0);
    EXPECT_EQ(dbm(5012), -3.0);
    EXPECT_EQ(dbm(0), std::nullopt);
    EXPECT_EQ(dbm(-1), std::nullopt);
    EXPECT_FALSE(std::signbit(*dbm(9999))) << "no minus before 0.00";
}

TEST(raised_names, name_quantities_and_directions) {
    EXPECT_THAT(pmctl::raised_names(0), IsEmpty());
    EXPECT_THAT(pmctl::raised_names(0x003f), IsEmpty()) << "bits of no quantity";
    EXPECT_THAT(pmctl::raised_names(0xffc0),
                ElementsAre("temperature high", "temperature low", "voltage high", "voltage low", "bias high",
                            "bias low", "tx power high", "tx power low", "rx power high", "rx power low"));
    EXPECT_THAT(pmctl::raised_names(0x1080), ElementsAre("voltage low", "rx power high"));
}

TEST(level_words, tell_all_levels_apart) {
    EXPECT_STREQ(pmctl::level_words(level::normal), "normal");
    EXPECT_STREQ(pmctl::level_words(level::high_alarm), "high alarm");
    EXPECT_STREQ(pmctl::level_words(level::high_warning), "high warning");
    EXPECT_STREQ(pmctl::level_words(level::low_warning), "low warning");
    EXPECT_STREQ(pmctl::level_words(level::low_alarm), "low alarm");
}

}  // namespace
