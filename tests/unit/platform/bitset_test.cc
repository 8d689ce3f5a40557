// SPDX-License-Identifier: Apache-2.0
#include "platform/bitset.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

namespace {

// A bit set with a guard behind it.
struct guarded {
    bitset_t set{};
    uint8_t guard[16];

    explicit guarded(uint32_t size) {
        set.size = size;
        memset(guard, 0x5a, sizeof guard);
    }

    ~guarded() {
        for (const uint8_t byte : guard) EXPECT_EQ(byte, 0x5a);
    }
};

std::set<uint32_t> numbers_in(const bitset_t &set) {
    std::set<uint32_t> numbers;
    for (uint32_t number = 0; number < 5000; ++number)
        if (bitset_is_bit_set(&set, number) != 0) numbers.insert(number);
    return numbers;
}

std::set<uint32_t> from_to(uint32_t first, uint32_t last) {
    std::set<uint32_t> numbers;
    for (uint32_t number = first; number <= last; ++number) numbers.insert(number);
    return numbers;
}

TEST(Bitset, BitsCountFromTheMostSignificantOne) {
    guarded bits(512);
    for (const uint32_t number : {0u, 9u, 15u, 4095u}) bitset_set_bit(&bits.set, number);
    EXPECT_EQ(bits.set.bits[0], 0x80);
    EXPECT_EQ(bits.set.bits[1], 0x41);
    EXPECT_EQ(bits.set.bits[511], 0x01);
    EXPECT_EQ(numbers_in(bits.set), (std::set<uint32_t>{0, 9, 15, 4095}));
}

TEST(Bitset, EveryBitIsItsOwn) {
    for (uint32_t number = 0; number < 4096; ++number) {
        bitset_t set{.size = 512, .bits = {}};
        bitset_set_bit(&set, number);
        ASSERT_EQ(set.bits[number / 8], 1 << (7 - number % 8));
        ASSERT_NE(bitset_is_bit_set(&set, number), 0);
        ASSERT_EQ(bitset_is_bit_set(&set, number ^ 1), 0);
    }
}

TEST(Bitset, NumbersThatDoNotFitAreLeftOut) {
    guarded bits(4);
    for (const uint32_t number : {32u, 33u, 4095u, 4096u, UINT32_MAX}) bitset_set_bit(&bits.set, number);
    bits.set.size = 512;
    EXPECT_TRUE(numbers_in(bits.set).empty());
    bitset_set_bit(&bits.set, 40);
    bits.set.size = 4;
    EXPECT_EQ(bitset_is_bit_set(&bits.set, 40), 0);
    EXPECT_EQ(bitset_is_bit_set(&bits.set, UINT32_MAX), 0);
}

TEST(Bitset, LargerSizesCountAs512) {
    for (const uint32_t size : {513u, 0x20000000u, UINT32_MAX}) {
        guarded bits(size);
        bitset_set_bit(&bits.set, 4096);
        bitset_set_range(&bits.set, 4000, 1000);
        EXPECT_EQ(numbers_in(bits.set), from_to(4000, 4095));
        bitset_clear(&bits.set);
        EXPECT_TRUE(numbers_in(bits.set).empty());
        EXPECT_EQ(bits.set.size, size);
    }
}

TEST(Bitset, RangesAreCutToWhatFits) {
    const struct {
        uint32_t size, start, count;
        std::set<uint32_t> expected;
    } cases[] = {
        {512, 10, 11, from_to(10, 20)},
        {512, 10, 0, {}},
        {512, 0, 4096, from_to(0, 4095)},
        {512, 4095, 9, {4095}},
        {512, 4096, 9, {}},
        {512, 3, UINT32_MAX, from_to(3, 4095)},
        {512, UINT32_MAX, UINT32_MAX, {}},
        {2, 7, 100, from_to(7, 15)},
        {0, 0, 100, {}},
    };
    for (const auto &[size, start, count, expected] : cases) {
        guarded bits(size);
        bitset_set_range(&bits.set, start, count);
        bits.set.size = 512;
        EXPECT_EQ(numbers_in(bits.set), expected) << size << ' ' << start << ' ' << count;
    }
}

TEST(Bitset, ClearEmptiesTheBytesInUse) {
    guarded bits(3);
    memset(bits.set.bits, 0xff, sizeof bits.set.bits);
    bitset_clear(&bits.set);
    EXPECT_EQ(bits.set.size, 3u);
    bits.set.size = 512;
    EXPECT_EQ(numbers_in(bits.set), from_to(24, 4095));
}

}  // namespace
