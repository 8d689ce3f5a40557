// SPDX-License-Identifier: Apache-2.0
#include <fmt/format.h>

#include <cstring>
#include <string>
#include <vector>

#include "guarded_bytes.h"
#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using support::bytes;
using support::guarded_bytes;
using support::call_log::take;
using numbers_in = std::vector<uint32_t>;

class vsan_bitset : public support::library_test {
  protected:
    // Converts bits that end where readable memory ends; the length may say more.
    void convert(uint32_t start, uint32_t length, const bytes &bits) {
        bytes content(8);
        std::memcpy(content.data(), &start, 4);
        std::memcpy(content.data() + 4, &length, 4);
        content.insert(content.end(), bits.begin(), bits.end());
        const guarded_bytes flexi(content);
        std::memset(&vsans, 0xa5, sizeof vsans);
        take();
        EXPECT_EQ(
            pm_create_vsan_bitset_from_pm_flexi_bitset(reinterpret_cast<const flexi_bitset_t *>(flexi.data()), &vsans),
            0U);
        EXPECT_EQ(support::hex(flexi.data(), content.size()), support::hex(content)) << "it is only read";
    }

    // The set has these numbers, put in one after the other.
    void expect_numbers(const numbers_in &expected) {
        std::vector<std::string> calls{"bitset_clear(size 512)"};
        bytes bits(512);
        for (const uint32_t number : expected) {
            calls.push_back(fmt::format("bitset_set_bit({})", number));
            bits[number / 8] = static_cast<uint8_t>(bits[number / 8] | 0x80 >> number % 8);
        }
        EXPECT_EQ(take(), calls);
        EXPECT_EQ(vsans.size, 512U);
        EXPECT_EQ(support::hex(vsans.bits, 512), support::hex(bits));
    }

    static numbers_in all(uint32_t first, uint32_t last) {
        numbers_in numbers;
        for (uint32_t number = first; number <= last; ++number) numbers.push_back(number);
        return numbers;
    }

    static bytes ones(size_t count) { return bytes(count, 0xff); }

    vsan_bitset_t vsans{};
};

TEST_F(vsan_bitset, is_cleared_when_there_are_no_bits) {
    for (const uint32_t start : {0U, 1U, 4095U, 4096U, 0xffffffffU}) {
        convert(start, 0, {});
        expect_numbers({});
    }
}

TEST_F(vsan_bitset, has_the_most_significant_bit_of_a_byte_first) {
    convert(0, 3, {0x80, 0x01, 0x42});
    expect_numbers({0, 15, 17, 22});
}

TEST_F(vsan_bitset, counts_from_the_start) {
    for (const uint32_t start : {0U, 1U, 7U, 8U, 100U, 4087U}) {
        for (uint32_t bit = 0; bit < 8; ++bit) {
            convert(start, 1, {static_cast<uint8_t>(0x80 >> bit)});
            expect_numbers({start + bit});
        }
    }
}

TEST_F(vsan_bitset, has_all_4096_numbers) {
    convert(0, 512, ones(512));
    expect_numbers(all(0, 4095));
}

TEST_F(vsan_bitset, is_empty_when_no_bit_is_set) {
    convert(0, 512, bytes(512, 0));
    expect_numbers({});
}

TEST_F(vsan_bitset, ends_at_4095) {
    convert(4090, 2, ones(2));
    expect_numbers(all(4090, 4095));
    convert(4088, 1, ones(1));
    expect_numbers(all(4088, 4095));
    convert(4088, 2, ones(2));
    expect_numbers(all(4088, 4095));
    convert(4095, 1, ones(1));
    expect_numbers({4095});
    convert(1, 512, ones(512));
    expect_numbers(all(1, 4095));
}

TEST_F(vsan_bitset, has_nothing_from_4096_on) {
    for (const uint32_t start : {4096U, 4097U, 0x10000U, 0x7fffffffU, 0x80000000U}) {
        convert(start, 2, ones(2));
        expect_numbers({});
    }
}

TEST_F(vsan_bitset, does_not_wrap_around_behind_the_last_number) {
    for (const uint32_t start : {0xfffffff8U, 0xfffffff9U, 0xffffffffU}) {
        convert(start, 4, ones(4));
        expect_numbers({});
    }
}

TEST_F(vsan_bitset, is_not_read_behind_4095) {
    convert(4090, 2, ones(1));
    expect_numbers(all(4090, 4095));
    convert(0, 0x10000, ones(512));
    expect_numbers(all(0, 4095));
    convert(4096, 1, {});
    expect_numbers({});
}

TEST_F(vsan_bitset, has_a_length_whose_bits_need_more_than_32_bits_to_count) {
    for (const uint32_t length : {0x20000000U, 0x20000001U, 0x80000000U, 0xffffffffU}) {
        convert(4080, length, {0x81, 0x18});
        expect_numbers({4080, 4087, 4091, 4092});
    }
}

TEST_F(vsan_bitset, may_be_read_from_any_address) {
    for (size_t offset = 0; offset < 4; ++offset) {
        bytes content(offset + 9);
        content[offset] = 16;
        content[offset + 4] = 1;
        content[offset + 8] = 0x81;
        take();
        pm_create_vsan_bitset_from_pm_flexi_bitset(reinterpret_cast<const flexi_bitset_t *>(content.data() + offset),
                                                   &vsans);
        expect_numbers({16, 23});
    }
}

}  // namespace
