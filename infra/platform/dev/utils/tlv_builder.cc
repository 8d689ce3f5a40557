// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/tlv_builder.h"

#include <exception>
#include <new>
#include <vector>

#include "platform_dev/mts_dev.h"
#include "tlv_array_format.h"

using namespace platform_dev;

struct tlv_builder {
    bool aligned;
    uint32_t count = 0;
    std::vector<uint8_t> bytes = std::vector<uint8_t>(tlv_array_header_size);

    explicit tlv_builder(bool is_aligned) : aligned(is_aligned) { store_be32(bytes.data(), tlv_array_mark); }

    void update_header() {
        store_be32(bytes.data() + tlv_array_count_offset, count);
        store_be32(bytes.data() + tlv_array_bytes_offset, static_cast<uint32_t>(bytes.size()) - tlv_array_header_size);
    }

    // What an element takes.
    [[nodiscard]] uint32_t size_of(uint16_t length) const {
        return tlv_element_header_size + tlv_value_size(length, aligned);
    }

    void add(uint16_t type, const void *value, uint16_t length) {
        const size_t start = bytes.size();
        bytes.resize(start + size_of(length));
        uint8_t *element = bytes.data() + start;
        store_be32(element, type_and_length(type, length));
        if (length != 0) memcpy(element + tlv_element_header_size, value, length);
        ++count;
        update_header();
    }

    void reset() {
        bytes.resize(tlv_array_header_size);
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
    if (builder->bytes.size() > MTS_MAX_PAYLOAD - builder->size_of(length)) return -1;
    builder->add(type, value, length);
    return 0;
} catch (const std::exception &) {
    return -1;
}

const void *tlv_builder_data(const tlv_builder_t *builder) { return builder->bytes.data(); }

uint32_t tlv_builder_size(const tlv_builder_t *builder) { return static_cast<uint32_t>(builder->bytes.size()); }

uint32_t tlv_builder_count(const tlv_builder_t *builder) { return builder->count; }

void tlv_builder_reset(tlv_builder_t *builder) { builder->reset(); }

void tlv_builder_destroy(tlv_builder_t *builder) { delete builder; }
