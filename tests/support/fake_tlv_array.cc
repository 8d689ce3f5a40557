// SPDX-License-Identifier: Apache-2.0
#include "fake_tlv_array.h"

#include <fmt/format.h>

#include "call_log.h"
#include "platform/tlv_array.h"

namespace support {
namespace {

fake_tlv_array *active = nullptr;

std::string place_of(const void *array) {
    return fmt::format("+{}", static_cast<const uint8_t *>(array) - active->origin());
}

// One kind of array or the other.
uint32_t count(const char *function, const void *array, uint32_t last) {
    call_log::add(fmt::format("{}({}, {})", function, place_of(array), last));
    return static_cast<uint32_t>(active->count());
}

uint32_t next(const char *function, const void *array, uint16_t *type, uint16_t *length, const void **value,
              uint32_t fifth, uint32_t *position) {
    call_log::add(fmt::format("{}({}, {}, {})", function, place_of(array), fifth, *position));
    const auto &element = active->at((*position)++);
    if (element.error != 0) return element.error;
    *type = element.type;
    *length = element.length;
    *value = element.value->data();
    return 0;
}

}  // namespace

fake_tlv_array::fake_tlv_array() { active = this; }

fake_tlv_array::~fake_tlv_array() { active = nullptr; }

void fake_tlv_array::add(uint16_t type, const bytes &value, uint16_t length) {
    elements_.push_back({0, type, length, std::make_unique<guarded_bytes>(value)});
}

void fake_tlv_array::add(uint16_t type, const bytes &value) { add(type, value, static_cast<uint16_t>(value.size())); }

void fake_tlv_array::add_failure(uint32_t error) { elements_.push_back({error, 0, 0, nullptr}); }

}  // namespace support

uint32_t tlv_array_get_num_tlvs(const void *array, uint32_t last) { return support::count(__func__, array, last); }

uint32_t tlv_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value, uint32_t fifth,
                                uint32_t *position) {
    return support::next(__func__, array, type, length, value, fifth, position);
}

uint32_t tlv_aligned_array_get_num_tlvs(const void *array, uint32_t last) {
    return support::count(__func__, array, last);
}

uint32_t tlv_aligned_array_get_next_tlv(const void *array, uint16_t *type, uint16_t *length, const void **value,
                                        uint32_t fifth, uint32_t *position) {
    return support::next(__func__, array, type, length, value, fifth, position);
}
