// SPDX-License-Identifier: Apache-2.0
#include "platform/tlv_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include "platform_dev/tlv_builder.h"

namespace {

// What one call of a get_next function stored.
struct visit {
    uint32_t result;
    uint16_t type = 0x5a5a;
    uint16_t length = 0x5a5a;
    const void *value = nullptr;
    uint32_t position;
};

using get_next = decltype(&tlv_array_get_next_tlv);

visit next(get_next call, const void *array, uint32_t position) {
    visit got{.result = 0, .position = position};
    got.result = call(array, &got.type, &got.length, &got.value, 1, &got.position);
    return got;
}

void expect_failure(const visit &got, uint32_t result, uint32_t position) {
    EXPECT_EQ(got.result, result);
    EXPECT_EQ(got.type, 0x5a5a);
    EXPECT_EQ(got.length, 0x5a5a);
    EXPECT_EQ(got.value, nullptr);
    EXPECT_EQ(got.position, position);
}

void expect_element(const visit &got, uint16_t type, uint16_t length, const void *value, uint32_t position) {
    EXPECT_EQ(got.result, 0u);
    EXPECT_EQ(got.type, type);
    EXPECT_EQ(got.length, length);
    EXPECT_EQ(got.value, value);
    EXPECT_EQ(got.position, position);
}

// A distinct value in every byte of the elements; behind the array, what must never be taken for an element.
const uint8_t plain[] = {'T',  'L',  'V',  '1',  0,    0,    0,    3,    0,    0,
                         0,    17,   0x01, 0x02, 0x00, 0x03, 0xa1, 0xa2, 0xa3,  // type 0x0102, 3 bytes
                         0x11, 0x12, 0x00, 0x00,                                // type 0x1112, empty
                         0x21, 0x22, 0x00, 0x02, 0xb1, 0xb2,                    // type 0x2122, 2 bytes
                         0x31, 0x32, 0x00, 0x01, 0xc1, 0xc2};
const uint8_t aligned[] = {'T',  'L',  'V',  '1',  0,    0,    0,    3,    0,    0,
                           0,    20,   0x01, 0x02, 0x00, 0x03, 0xa1, 0xa2, 0xa3, 0x00,  // one byte of zeros
                           0x11, 0x12, 0x00, 0x00,                                      //
                           0x21, 0x22, 0x00, 0x02, 0xb1, 0xb2, 0x00, 0x00,              // two bytes of zeros
                           0x31, 0x32, 0x00, 0x01, 0xc1, 0xc2};

TEST(TlvArray, WalksEveryElementAndEnds) {
    EXPECT_EQ(tlv_array_get_num_tlvs(plain, 1), 3u);
    const auto call = tlv_array_get_next_tlv;
    expect_element(next(call, plain, 0), 0x0102, 3, plain + 16, 7);
    expect_element(next(call, plain, 7), 0x1112, 0, plain + 23, 11);
    expect_element(next(call, plain, 11), 0x2122, 2, plain + 27, 17);
    expect_failure(next(call, plain, 17), ENODATA, 17);
    expect_failure(next(call, plain, 18), ENODATA, 18);
    expect_failure(next(call, plain, UINT32_MAX), ENODATA, UINT32_MAX);
}

TEST(TlvAlignedArray, WalksEveryElementAndEnds) {
    EXPECT_EQ(tlv_aligned_array_get_num_tlvs(aligned, 1), 3u);
    const auto call = tlv_aligned_array_get_next_tlv;
    expect_element(next(call, aligned, 0), 0x0102, 3, aligned + 16, 8);
    expect_element(next(call, aligned, 8), 0x1112, 0, aligned + 24, 12);
    expect_element(next(call, aligned, 12), 0x2122, 2, aligned + 28, 20);
    expect_failure(next(call, aligned, 20), ENODATA, 20);
}

TEST(TlvArray, IsReadAtAnyAddress) {
    std::vector<uint8_t> storage(sizeof plain + 8);
    for (size_t shift = 0; shift < 8; ++shift) {
        memcpy(storage.data() + shift, plain, sizeof plain);
        EXPECT_EQ(tlv_array_get_num_tlvs(storage.data() + shift, 1), 3u);
        expect_element(next(tlv_array_get_next_tlv, storage.data() + shift, 7), 0x1112, 0, storage.data() + shift + 23,
                       11);
    }
}

// The memory of an array of just the bytes given, and some zeroed bytes behind it, as payloads have.
std::unique_ptr<uint8_t[]> payload(const uint8_t *bytes, size_t size) {
    auto copy = std::make_unique<uint8_t[]>(size + 16);
    memcpy(copy.get(), bytes, size);
    return copy;
}

TEST(TlvArray, RemainderOfAHeaderHoldsNothing) {
    for (size_t size = 0; size < 12; ++size) {
        const auto bytes = payload(plain, size);
        EXPECT_EQ(tlv_array_get_num_tlvs(bytes.get(), 1), 0u) << size;
        EXPECT_EQ(tlv_aligned_array_get_num_tlvs(bytes.get(), 1), 0u) << size;
        expect_failure(next(tlv_array_get_next_tlv, bytes.get(), 0), size < 4 ? EBADMSG : ENODATA, 0);
    }
}

TEST(TlvArray, WrongMarkHoldsNothing) {
    for (size_t i = 0; i < 4; ++i) {
        const auto bytes = payload(plain, sizeof plain);
        bytes[i] ^= 0x20;
        EXPECT_EQ(tlv_array_get_num_tlvs(bytes.get(), 1), 0u);
        EXPECT_EQ(tlv_aligned_array_get_num_tlvs(bytes.get(), 1), 0u);
        expect_failure(next(tlv_array_get_next_tlv, bytes.get(), 0), EBADMSG, 0);
        expect_failure(next(tlv_aligned_array_get_next_tlv, bytes.get(), 0), EBADMSG, 0);
    }
}

TEST(TlvArray, CountThatTheBytesCannotHoldIsNone) {
    const auto bytes = payload(plain, sizeof plain);
    bytes[7] = 4;  // 17 bytes hold at most 4 elements
    EXPECT_EQ(tlv_array_get_num_tlvs(bytes.get(), 1), 4u);
    bytes[7] = 5;
    EXPECT_EQ(tlv_array_get_num_tlvs(bytes.get(), 1), 0u);
    memset(bytes.get() + 4, 0xff, 4);
    EXPECT_EQ(tlv_array_get_num_tlvs(bytes.get(), 1), 0u);
}

// Cuts the array's own length: what is still whole is read, the first element that is not fails.
void expect_cut_at(get_next call, const uint8_t *array, size_t size, std::vector<uint32_t> ends) {
    for (uint32_t length = 0; length <= ends.back(); ++length) {
        const auto bytes = payload(array, size);
        bytes[11] = static_cast<uint8_t>(length);
        uint32_t position = 0;
        for (const uint32_t end : ends) {
            const visit got = next(call, bytes.get(), position);
            if (end > length) {
                expect_failure(got, position == length ? ENODATA : EBADMSG, position);
                break;
            }
            EXPECT_EQ(got.result, 0u);
            EXPECT_EQ(got.position, end);
            position = end;
        }
    }
}

// An array that ends with its memory, and with a part of an element: a reader that goes on leaves the block.
TEST(TlvArray, NothingBehindTheArrayIsRead) {
    for (uint8_t length = 0; length < 17; ++length) {
        std::vector<uint8_t> bytes(plain, plain + 12 + length);
        bytes.shrink_to_fit();
        bytes[11] = length;
        uint32_t position = 0;
        uint32_t result = 0;
        while (result == 0) {
            const visit got = next(tlv_array_get_next_tlv, bytes.data(), position);
            result = got.result;
            position = got.position;
        }
        EXPECT_EQ(result, position == length ? ENODATA : EBADMSG) << int{length};
    }
}

TEST(TlvArray, ElementBehindTheArraysEndFails) {
    expect_cut_at(tlv_array_get_next_tlv, plain, sizeof plain, {7, 11, 17});
    expect_cut_at(tlv_aligned_array_get_next_tlv, aligned, sizeof aligned, {8, 12, 20});
}

TEST(TlvArray, LongestElementIsBounded) {
    std::vector<uint8_t> bytes(12 + 4 + 257);
    const uint8_t header[] = {'T', 'L', 'V', '1', 0, 0, 0, 1, 0, 0, 1, 5, 0, 7, 1, 0};
    std::copy(std::begin(header), std::end(header), bytes.begin());
    expect_element(next(tlv_array_get_next_tlv, bytes.data(), 0), 7, 256, bytes.data() + 16, 260);
    expect_element(next(tlv_aligned_array_get_next_tlv, bytes.data(), 0), 7, 256, bytes.data() + 16, 260);
    bytes[15] = 1;
    expect_failure(next(tlv_array_get_next_tlv, bytes.data(), 0), EBADMSG, 0);
    bytes[11] = 8;
    expect_failure(next(tlv_aligned_array_get_next_tlv, bytes.data(), 0), EBADMSG, 0);
    bytes[14] = bytes[15] = 0xff;
    expect_failure(next(tlv_array_get_next_tlv, bytes.data(), 0), EBADMSG, 0);
}

TEST(TlvArray, ZerosAreNoElement) {
    const uint8_t zeros[20] = {'T', 'L', 'V', '1', 0, 0, 0, 2, 0, 0, 0, 8};
    expect_failure(next(tlv_array_get_next_tlv, zeros, 0), EBADMSG, 0);
    expect_failure(next(tlv_aligned_array_get_next_tlv, zeros, 4), EBADMSG, 4);
    uint8_t empty[16] = {'T', 'L', 'V', '1', 0, 0, 0, 1, 0, 0, 0, 4, 0, 1, 0, 0};
    expect_element(next(tlv_array_get_next_tlv, empty, 0), 1, 0, empty + 16, 4);
    empty[13] = 0;
    empty[15] = 1;
    empty[11] = 5;
    const auto of_type_zero = payload(empty, sizeof empty);
    expect_element(next(tlv_array_get_next_tlv, of_type_zero.get(), 0), 0, 1, of_type_zero.get() + 16, 5);
}

TEST(TlvArray, CountThatNoMessageCouldHoldIsNone) {
    uint8_t header[] = {'T', 'L', 'V', '1', 0, 0, 0, 2, 1, 0, 0, 0};
    EXPECT_EQ(tlv_array_get_num_tlvs(header, 1), 2u);
    EXPECT_EQ(tlv_aligned_array_get_num_tlvs(header, 1), 2u);
    header[11] = 1;
    EXPECT_EQ(tlv_array_get_num_tlvs(header, 1), 0u);
    EXPECT_EQ(tlv_aligned_array_get_num_tlvs(header, 1), 0u);
}

// Walks an array that claims all the memory there is, in a block that ends with the zeroed tail; a reader that passes
// it leaves the block.
void walk_to_the_tail(get_next call, const std::vector<uint8_t> &elements) {
    std::vector<uint8_t> bytes = {'T', 'L', 'V', '1', 0x3f, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff};
    bytes.insert(bytes.end(), elements.begin(), elements.end());
    bytes.resize(bytes.size() + TLV_ZEROED_TAIL_SIZE);
    const auto block = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    visit got{.result = 0, .position = 0};
    while (got.result == 0) {
        got = next(call, block.get(), got.position);
        if (got.result != 0) break;
        ASSERT_LE(static_cast<const uint8_t *>(got.value) + got.length, block.get() + bytes.size());
    }
    EXPECT_EQ(got.result, EBADMSG);
}

TEST(TlvArray, WalkThatClaimsAllMemoryEndsInTheZeroedTail) {
    for (const auto call : {tlv_array_get_next_tlv, tlv_aligned_array_get_next_tlv}) {
        for (const int size : {0, 1, 253, 255}) {
            const auto length = static_cast<uint8_t>(size);
            // The last element begins before the tail with 1 to 4 bytes of its header.
            walk_to_the_tail(call, {0x11});
            walk_to_the_tail(call, {0x11, 0x12});
            walk_to_the_tail(call, {0x11, 0x12, 0x00});
            walk_to_the_tail(call, {0x11, 0x12, 0x01});
            walk_to_the_tail(call, {0x11, 0x12, 0x00, length});
            walk_to_the_tail(call, {0x00, 0x00, 0x00, length});
            walk_to_the_tail(call, {0x11, 0x12, 0x00, 0x01, 0xa1, 0x21, 0x22, 0x00, length});
        }
    }
}

}  // namespace
