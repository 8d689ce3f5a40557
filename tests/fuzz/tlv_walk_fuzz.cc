// SPDX-License-Identifier: Apache-2.0
// Walks of element arrays that are what remains of a payload, wherever they start in it.
#include <cerrno>
#include <cstring>
#include <memory>

#include "platform/tlv_array.h"
#include "platform_dev/tlv_builder.h"
#include "support/fuzz.h"

namespace {

struct array_functions {
    decltype(&tlv_array_get_num_tlvs) count;
    decltype(&tlv_array_get_next_tlv) next;
    bool is_aligned;
};

constexpr array_functions both_forms[] = {{tlv_array_get_num_tlvs, tlv_array_get_next_tlv, false},
                                          {tlv_aligned_array_get_num_tlvs, tlv_aligned_array_get_next_tlv, true}};

// What the walk stored is inside the block, and a builder that is given it makes the same bytes.
void walk(const array_functions &form, const uint8_t *array, size_t readable) {
    form.count(array, 1);
    const std::unique_ptr<tlv_builder_t, decltype(&tlv_builder_destroy)> copy(tlv_builder_create(form.is_aligned),
                                                                              tlv_builder_destroy);
    uint32_t position = 0;
    uint32_t elements = 0;
    for (;;) {
        uint16_t type = 0x5a5a;
        uint16_t length = 0x5a5a;
        const void *value = nullptr;
        const uint32_t before = position;
        const uint32_t error = form.next(array, &type, &length, &value, 1, &position);
        if (error != 0) {
            FUZZ_REQUIRE(error == ENODATA || error == EBADMSG);
            FUZZ_REQUIRE(type == 0x5a5a && length == 0x5a5a && value == nullptr && position == before);
            break;
        }
        ++elements;
        FUZZ_REQUIRE(position > before);
        const auto *const bytes = static_cast<const uint8_t *>(value);
        FUZZ_REQUIRE(bytes + length <= array + readable);
        FUZZ_REQUIRE(tlv_builder_add(copy.get(), type, value, length) == 0);
        const auto *const built = static_cast<const uint8_t *>(tlv_builder_data(copy.get()));
        FUZZ_REQUIRE(std::memcmp(built + 12 + before, bytes - 4, length + 4u) == 0);
    }
    FUZZ_REQUIRE(form.count(tlv_builder_data(copy.get()), 1) == elements);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const size_t readable = size + TLV_ZEROED_TAIL_SIZE;
    const auto block = std::make_unique<uint8_t[]>(readable);
    if (size != 0) std::memcpy(block.get(), data, size);
    for (const array_functions &form : both_forms) walk(form, block.get(), readable);
    return 0;
}
