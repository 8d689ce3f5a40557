// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/tlv_builder.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

#include "platform/tlv_array.h"

namespace {

using testing::ElementsAre;
using builder_ptr = std::unique_ptr<tlv_builder_t, decltype(&tlv_builder_destroy)>;

builder_ptr make_builder(int32_t aligned) { return {tlv_builder_create(aligned), tlv_builder_destroy}; }

std::vector<uint8_t> bytes_of(const builder_ptr &builder) {
    const auto *data = static_cast<const uint8_t *>(tlv_builder_data(builder.get()));
    return {data, data + tlv_builder_size(builder.get())};
}

void add_two(const builder_ptr &builder) {
    const uint8_t value[] = {0xa1, 0xa2, 0xa3};
    EXPECT_EQ(tlv_builder_add(builder.get(), 0x0102, value, 3), 0);
    EXPECT_EQ(tlv_builder_add(builder.get(), 0x1112, nullptr, 0), 0);
}

TEST(TlvBuilder, EmptyArrayIsAHeader) {
    const auto builder = make_builder(0);
    EXPECT_THAT(bytes_of(builder), ElementsAre('T', 'L', 'V', '1', 0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_EQ(tlv_builder_count(builder.get()), 0u);
    EXPECT_EQ(tlv_array_get_num_tlvs(tlv_builder_data(builder.get()), 1), 0u);
}

TEST(TlvBuilder, PlainElementsFollowEachOther) {
    const auto builder = make_builder(0);
    add_two(builder);
    EXPECT_THAT(bytes_of(builder), ElementsAre('T', 'L', 'V', '1', 0, 0, 0, 2, 0, 0, 0, 11,  //
                                               0x01, 0x02, 0x00, 0x03, 0xa1, 0xa2, 0xa3,     //
                                               0x11, 0x12, 0x00, 0x00));
    EXPECT_EQ(tlv_builder_count(builder.get()), 2u);
}

TEST(TlvBuilder, AlignedElementsArePaddedWithZeros) {
    const auto builder = make_builder(1);
    add_two(builder);
    EXPECT_THAT(bytes_of(builder), ElementsAre('T', 'L', 'V', '1', 0, 0, 0, 2, 0, 0, 0, 12,     //
                                               0x01, 0x02, 0x00, 0x03, 0xa1, 0xa2, 0xa3, 0x00,  //
                                               0x11, 0x12, 0x00, 0x00));
}

TEST(TlvBuilder, ResetStartsAnew) {
    const auto builder = make_builder(1);
    const std::vector<uint8_t> ones(64, 0xff);
    tlv_builder_add(builder.get(), 9, ones.data(), 64);
    tlv_builder_reset(builder.get());
    EXPECT_THAT(bytes_of(builder), ElementsAre('T', 'L', 'V', '1', 0, 0, 0, 0, 0, 0, 0, 0));
    tlv_builder_add(builder.get(), 9, ones.data(), 1);
    EXPECT_THAT(bytes_of(builder), ElementsAre('T', 'L', 'V', '1', 0, 0, 0, 1, 0, 0, 0, 8, 0, 9, 0, 1, 0xff, 0, 0, 0));
}

TEST(TlvBuilder, RefusesWhatNoReaderTakes) {
    const std::vector<uint8_t> value(TLV_MAX_VALUE_SIZE + 1);
    for (const bool is_aligned : {false, true}) {
        const auto builder = make_builder(is_aligned);
        EXPECT_EQ(tlv_builder_add(builder.get(), 0, nullptr, 0), -1);
        EXPECT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 257), -1);
        EXPECT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 65535), -1);
        EXPECT_EQ(tlv_builder_count(builder.get()), 0u);
        EXPECT_EQ(tlv_builder_size(builder.get()), 12u);
        EXPECT_EQ(tlv_builder_add(builder.get(), 0, value.data(), 1), 0);
        EXPECT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 256), 0);
        EXPECT_EQ(tlv_builder_count(builder.get()), 2u);
    }
}

// A header of 12 bytes and elements of 256: 65535 of them are the most that a message carries.
TEST(TlvBuilder, RefusesWhatNoMessageCarries) {
    const auto builder = make_builder(0);
    const std::vector<uint8_t> value(252);
    for (size_t i = 0; i < 65535; ++i) ASSERT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 252), 0);
    EXPECT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 252), -1);
    EXPECT_EQ(tlv_builder_add(builder.get(), 7, value.data(), 240), 0);
    EXPECT_EQ(tlv_builder_size(builder.get()), 16u * 1024 * 1024);
    EXPECT_EQ(tlv_builder_add(builder.get(), 7, nullptr, 0), -1);
    EXPECT_EQ(tlv_array_get_num_tlvs(tlv_builder_data(builder.get()), 1), 65536u);
}

TEST(TlvBuilder, ReaderFindsEveryElementOfBothForms) {
    for (const bool is_aligned : {false, true}) {
        const auto builder = make_builder(is_aligned);
        std::vector<uint8_t> value(TLV_MAX_VALUE_SIZE);
        for (size_t i = 0; i < value.size(); ++i) value[i] = static_cast<uint8_t>(i * 7);
        for (uint16_t length = 0; length <= value.size(); ++length)
            ASSERT_EQ(tlv_builder_add(builder.get(), static_cast<uint16_t>(1000 + length), value.data(), length), 0);
        const void *array = tlv_builder_data(builder.get());
        const auto count = is_aligned ? tlv_aligned_array_get_num_tlvs : tlv_array_get_num_tlvs;
        const auto next = is_aligned ? tlv_aligned_array_get_next_tlv : tlv_array_get_next_tlv;
        ASSERT_EQ(count(array, 1), 257u);
        uint32_t position = 0;
        for (uint16_t i = 0; i <= value.size(); ++i) {
            uint16_t type = 0;
            uint16_t length = 0;
            const void *found = nullptr;
            ASSERT_EQ(next(array, &type, &length, &found, 1, &position), 0u);
            ASSERT_EQ(type, 1000 + i);
            ASSERT_EQ(length, i);
            ASSERT_EQ(memcmp(found, value.data(), length), 0);
        }
        EXPECT_EQ(position + 12, tlv_builder_size(builder.get()));
    }
}

}  // namespace
