// SPDX-License-Identifier: Apache-2.0
// The serial-id page.
#include "sff8472/identification.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sff8472/checksum.h"
#include "sff8472/code_names.h"

namespace {

using sff8472::identification;
using sff8472::identify;

using page = std::array<uint8_t, sff8472::serial_id::page_size>;

page with(std::initializer_list<std::pair<size_t, uint8_t>> bytes) {
    page made{};
    for (const auto &[offset, byte] : bytes) made.at(offset) = byte;
    return made;
}

page with_text(size_t offset, std::string_view text) {
    page made{};
    std::copy(text.begin(), text.end(), made.begin() + static_cast<ptrdiff_t>(offset));
    return made;
}

TEST(codes, have_names) {
    for (const auto &[code, name] : sff8472::identifiers) EXPECT_EQ(identify(with({{0, code}})).identifier, name);
    for (const auto &[code, name] : sff8472::connectors) EXPECT_EQ(identify(with({{2, code}})).connector, name);
    EXPECT_EQ(identify(with({{0, 0x03}})).identifier, "SFP");
    EXPECT_EQ(identify(with({{2, 0x07}})).connector, "LC");
    EXPECT_EQ(identify(with({{2, 0x21}})).connector, "copper pigtail");
    EXPECT_EQ(identify(with({{0, 0x2a}})).identifier, "unknown (0x2a)");
    EXPECT_EQ(identify(with({{2, 0xff}})).connector, "unknown (0xff)");
}

TEST(technology, is_told_by_single_bits) {
    EXPECT_EQ(identify(with({{3, 0x10}})).technology, "10GBASE-SR");
    EXPECT_EQ(identify(with({{3, 0x20}})).technology, "10GBASE-LR");
    EXPECT_EQ(identify(with({{3, 0x40}})).technology, "10GBASE-LRM");
    EXPECT_EQ(identify(with({{3, 0x80}})).technology, "10GBASE-ER");
    EXPECT_EQ(identify(with({{6, 0x01}})).technology, "1000BASE-SX");
    EXPECT_EQ(identify(with({{6, 0x02}})).technology, "1000BASE-LX");
    EXPECT_EQ(identify(with({{6, 0x04}})).technology, "1000BASE-CX");
    EXPECT_EQ(identify(with({{6, 0x08}})).technology, "1000BASE-T");
    EXPECT_EQ(identify(with({{7, 0x02}})).technology, "long wave laser");
    EXPECT_EQ(identify(with({{7, 0x04}})).technology, "short wave laser");
    EXPECT_EQ(identify(with({{8, 0x04}})).technology, "passive copper cable");
    EXPECT_EQ(identify(with({{8, 0x08}})).technology, "active cable");
    EXPECT_EQ(identify(with({{8, 0x10}})).technology, "long wave laser");
    EXPECT_EQ(identify(with({{8, 0x20}})).technology, "short wave laser with OFC");
    EXPECT_EQ(identify(with({{8, 0x40}})).technology, "short wave laser");
    EXPECT_EQ(identify(with({{6, 0x10}})).technology, "100BASE-LX10");
    EXPECT_EQ(identify(with({{6, 0x20}})).technology, "100BASE-FX");
    EXPECT_EQ(identify(with({{6, 0x40}})).technology, "BASE-BX10");
    EXPECT_EQ(identify(with({{6, 0x80}})).technology, "BASE-PX");
    EXPECT_EQ(identify(with({{7, 0x01}})).technology, "electrical inter-enclosure");
    EXPECT_EQ(identify(with({{8, 0x80}})).technology, "electrical intra-enclosure");
    EXPECT_EQ(identify(with({})).technology, "");
}

TEST(copper, is_told_by_the_technology) {
    for (const auto &[offset, bit] : {std::pair<size_t, uint8_t>{6, 0x08}, {6, 0x04}, {7, 0x01}, {8, 0x04}, {8, 0x80}})
        EXPECT_TRUE(identify(with({{offset, bit}})).is_copper) << offset << " " << int{bit};
    EXPECT_FALSE(identify(with({{7, 0x03}})).is_copper);
    EXPECT_FALSE(identify(with({})).is_copper);
    // Whatever its connector is.
    EXPECT_FALSE(identify(with({{2, 0x21}, {3, 0x10}})).is_copper);
}

TEST(copper, is_told_by_the_plug_of_an_active_cable) {
    EXPECT_TRUE(identify(with({{2, 0x21}, {8, 0x08}})).is_copper);
    for (const uint8_t plug : {uint8_t{0x00}, uint8_t{0x0b}, uint8_t{0x23}})
        EXPECT_FALSE(identify(with({{2, plug}, {8, 0x08}})).is_copper);
}

TEST(texts, end_before_the_blanks_that_pad_them) {
    EXPECT_EQ(identify(with_text(20, "INVENTED OPTICS ")).vendor, "INVENTED OPTICS");
    EXPECT_EQ(identify(with_text(20, "SIXTEEN LETTERS!")).vendor, "SIXTEEN LETTERS!");
    EXPECT_EQ(identify(with_text(20, "                ")).vendor, "");
    EXPECT_EQ(identify(with({})).vendor, "");
    EXPECT_EQ(identify(with_text(40, "SW 850")).part_number, "SW 850");
    EXPECT_EQ(identify(with_text(56, "A01 ")).revision, "A01");
    EXPECT_EQ(identify(with_text(68, "S/N 7  ")).serial_number, "S/N 7");
    const std::array<uint8_t, 3> oui{1, 2, 3};
    EXPECT_EQ(identify(with({{37, 1}, {38, 2}, {39, 3}})).oui, oui);
}

TEST(date, has_a_lot_behind_it) {
    const auto dated = [](std::string_view code) { return identify(with_text(84, code)); };
    EXPECT_EQ(dated("240517  ").date, "2024-05-17");
    EXPECT_EQ(dated("240517  ").lot, "");
    EXPECT_EQ(dated("240517A7").lot, "A7");
    EXPECT_EQ(dated("24O517  ").date, "");
    EXPECT_EQ(dated("2405").date, "");
}

TEST(bit_rate, has_a_unit_for_the_fast) {
    EXPECT_EQ(identify(with({{12, 85}})).bit_rate, 8500u);
    EXPECT_EQ(identify(with({{12, 103}, {66, 20}})).bit_rate, 10300u);
    EXPECT_EQ(identify(with({{12, 0xff}, {66, 112}})).bit_rate, 28000u);
    EXPECT_EQ(identify(with({})).bit_rate, 0u);
}

TEST(wavelength, has_a_fraction_in_dwdm_transceivers) {
    EXPECT_EQ(identify(with({{0, 0x03}, {60, 0x03}, {61, 0x52}, {62, 7}})).wavelength, 85000u);
    EXPECT_EQ(identify(with({{0, 0x0b}, {60, 0x06}, {61, 0x0e}, {62, 12}})).wavelength, 155012u);
    const identification cable = identify(with({{8, 0x04}, {60, 0x01}}));
    EXPECT_EQ(cable.wavelength, 0u);
    EXPECT_EQ(identify(with({{2, 0x0b}, {8, 0x08}, {60, 0x01}})).wavelength, 0u);
    EXPECT_EQ(identify(with({{6, 0x08}, {60, 0x01}})).wavelength, 0u);
}

TEST(diagnostics, are_told_by_one_bit) {
    EXPECT_TRUE(identify(with({{92, 0x40}})).has_diagnostics);
    EXPECT_FALSE(identify(with({{92, 0xbf}})).has_diagnostics);
}

TEST(checksums, cover_all_of_both_parts) {
    page good;
    for (size_t i = 0; i < good.size(); ++i) good[i] = static_cast<uint8_t>(3 * i + 1);
    good[63] = sff8472::checksum(std::span(good).first(63));
    good[95] = sff8472::checksum(std::span(good).subspan(64, 31));
    EXPECT_TRUE(identify(good).checksums_are_right);
    for (size_t i = 0; i < good.size(); ++i) {
        page changed = good;
        ++changed[i];
        EXPECT_EQ(identify(changed).checksums_are_right, i >= 96) << i;
    }
    EXPECT_EQ(sff8472::checksum(std::array<uint8_t, 3>{0xff, 0xff, 3}), 1);
}

std::string reaches_of(const page &of) {
    std::string text;
    for (const auto &[medium, metres, is_more] : sff8472::reaches_of(of))
        text.append(medium).append(is_more ? " >" : " ").append(std::to_string(metres)).append("; ");
    return text;
}

TEST(reaches, have_units_by_medium) {
    EXPECT_EQ(reaches_of(with({{16, 8}, {17, 3}, {18, 40}, {19, 30}})),
              "OM4 fibre 400; OM3 fibre 300; OM2 fibre 80; OM1 fibre 30; ");
    EXPECT_EQ(reaches_of(with({{8, 0x04}, {18, 5}, {19, 7}})), "copper 5; ");
    EXPECT_EQ(reaches_of(with({{8, 0x04}})), "");
    EXPECT_EQ(reaches_of(with({{2, 0x21}, {8, 0x08}, {18, 5}})), "copper 5; ");
    EXPECT_EQ(reaches_of(with({{2, 0x0b}, {8, 0x08}, {18, 20}, {19, 7}})), "cable 20; ");
    EXPECT_EQ(reaches_of(with({})), "");
}

TEST(reaches, over_single_mode_fibre_have_a_fine_and_a_coarse_unit) {
    const auto reach = [](uint8_t kilometres, uint8_t hundreds) {
        return reaches_of(with({{14, kilometres}, {15, hundreds}}));
    };
    EXPECT_EQ(reach(10, 100), "single-mode fibre 10000; ");
    EXPECT_EQ(reach(10, 104), "single-mode fibre 10400; ");
    EXPECT_EQ(reach(0, 5), "single-mode fibre 500; ");
    EXPECT_EQ(reach(80, 0), "single-mode fibre 80000; ");
    EXPECT_EQ(reach(80, 255), "single-mode fibre 80000; ");
    EXPECT_EQ(reach(255, 255), "single-mode fibre >254000; ");
    EXPECT_EQ(reach(0, 255), "single-mode fibre >25400; ");
}

TEST(reaches, may_be_farther_than_a_byte_counts) {
    EXPECT_EQ(reaches_of(with({{16, 254}, {17, 255}, {18, 255}, {19, 255}})),
              "OM4 fibre >2540; OM3 fibre >2540; OM2 fibre 2540; OM1 fibre >2540; ");
    EXPECT_EQ(reaches_of(with({{8, 0x04}, {18, 255}})), "copper >254; ");
}

}  // namespace
