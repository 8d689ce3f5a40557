// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/tlv_builder.h"

#include <exception>
#include <new>
#include <vector>

#include "platform_dev/mts_dev.h"
#include "tlv_array_format.h"

using namespace platform_dev;

// Twice what any element takes, so that doubling makes room for one.
static constexpr uint32_t first_room = 4096;
static_assert(first_room >= 2 * (tlv_element_header_size + TLV_MAX_VALUE_SIZE + tlv_array_alignment));

struct tlv_builder {
    bool aligned;
    uint32_t count = 0;
    uint32_t size = tlv_array_header_size;
    std::vector<uint8_t> bytes = std::vector<uint8_t>(first_room);  // those behind `size` are room for more

    explicit tlv_builder(bool is_aligned) : aligned(is_aligned) {
        store_be32(bytes.data(), tlv_array_mark);
        update_header();
    }

    void update_header() {
        store_be32(bytes.data() + tlv_array_count_offset, count);
        store_be32(bytes.data() + tlv_array_bytes_offset, size - tlv_array_header_size);
    }

    // What an element takes.
    [[nodiscard]] uint32_t size_of(uint16_t length) const {
        return tlv_element_header_size + tlv_value_size(length, aligned);
    }

    // Where an element of this size goes.
    uint8_t *extend(uint32_t added) {
        if (bytes.size() - size < added) bytes.resize(2 * bytes.size());
        uint8_t *const end = bytes.data() + size;
        size += added;
        return end;
    }

    void add(uint16_t type, const void *value, uint16_t length) {
        const uint32_t element_size = size_of(length);
        uint8_t *const element = extend(element_size);
        store_be32(element + element_size - tlv_array_alignment, 0);  // what is not written over pads the value
        store_be32(element, type_and_length(type, length));
        if (length != 0) memcpy(element + tlv_element_header_size, value, length);
        ++count;
        update_header();
    }

    void reset() {
        size = tlv_array_header_size;
        count = 0;
        update_header();
    }
};

tlv_builder_t *tlv_builder_create(int32_t aligned) try {
    return new tlv_builder(aligned != 0);
} catch (const std::exception &) {
    return nullptr;
}

int32_t tlv_builder_add(tlv_builder_t *builder, uint16_t type, const void *value, uint16_t length) try {
    if (!is_tlv_element(type_and_length(type, length))) return -1;
    if (builder->size > MTS_MAX_PAYLOAD - builder->size_of(length)) return -1;
    builder->add(type, value, length);
    return 0;
} catch (const std::exception &) {
    return -1;
}

const void *tlv_builder_data(const tlv_builder_t *builder) { return builder->bytes.data(); }

uint32_t tlv_builder_size(const tlv_builder_t *builder) { return builder->size; }

uint32_t tlv_builder_count(const tlv_builder_t *builder) { return builder->count; }

void tlv_builder_reset(tlv_builder_t *builder) { builder->reset(); }

void tlv_builder_destroy(tlv_builder_t *builder) { delete builder; }
