// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/port_info_record.h"

#include <cstdio>
#include <cstring>

#include "platform/if_index.h"
#include "platform/tlv_array.h"
#include "pm_api_common/assertion.h"
#include "protocol/port_info_layout.h"

namespace {

using pm::attribute_kind;
using pm::load_be32;
using pm::store;

struct element {
    uint16_t type = 0;
    uint16_t length = 0;
    const void *value = nullptr;
};

// The attributes by type, for one look-up an element.
constexpr auto attribute_by_type = [] {
    std::array<pm::port_attribute, pm::port_attributes.back().type + 1> table{};
    for (const pm::port_attribute &attribute : pm::port_attributes) table[attribute.type] = attribute;
    return table;
}();

void pm_parse_port_info_base(const uint8_t *base_record, pm_port_info_t *record) {
    PM_ASSERT(base_record != nullptr);
    PM_ASSERT(record != nullptr);
    std::memset(record, 0, sizeof *record);
    pm::decode_record<pm::base_record_fields>(base_record, record, ntoh_if_index);
}

// The comparison is of wire forms: values start, as base records do, with the port's index as the service sent it.
bool belongs_to(uint32_t wire_if_index, const element &found) {
    if (found.type == pm::owner_attribute) return found.length == pm::owner_text_size;
    return pm::load<uint32_t>(found.value) == wire_if_index;
}

void report_unknown(const element &found, if_index_t if_index) {
    char name[256];
    sprintf_if_index(name, if_index);
    std::printf("%s: Unknown TLV with type %d for %s\n", "pm_parse_port_info", found.type, name);
}

// Stores one attribute. `held` carries a number from the element that brings it to the one that stores it.
void store_attribute(const element &found, pm_port_info_t *record, uint32_t &held) {
    const pm::port_attribute attribute =
        found.type < attribute_by_type.size() ? attribute_by_type[found.type] : pm::port_attribute{};
    const uint8_t *const value = static_cast<const uint8_t *>(found.value) + pm::attribute_offset;
    auto *const record_bytes = reinterpret_cast<uint8_t *>(record);
    uint8_t *const member = record_bytes + attribute.member;
    switch (attribute.kind) {
        case attribute_kind::number:
            return store(member, load_be32(value));
        case attribute_kind::number_to_16:
            return store(member, static_cast<uint16_t>(load_be32(value)));
        case attribute_kind::number_to_8:
            return store(member, static_cast<uint8_t>(load_be32(value)));
        case attribute_kind::first_byte:
            return store(member, *value);
        case attribute_kind::first_byte_to_32:
            return store(member, uint32_t{*value});
        case attribute_kind::raw:
            return store(member, pm::load<uint32_t>(value));
        case attribute_kind::number_held:
            held = load_be32(value);
            return;
        case attribute_kind::number_to_16_and_held:
            store(record_bytes + pm::held_number_member, held);
            return store(member, static_cast<uint16_t>(load_be32(value)));
        case attribute_kind::text:
            std::memcpy(member, found.value, pm::owner_text_size);
            member[pm::owner_text_size - 1] = '\0';
            return;
        case attribute_kind::ignored:
            return;
        case attribute_kind::unknown:
            return report_unknown(found, record->if_index);
    }
}

// An element that cannot be read does not end the walk: the one before it is looked at again.
void store_attributes(const uint8_t *base_record, const void *tlv_array, pm_port_info_t *record) {
    const auto wire_if_index = pm::load<uint32_t>(base_record);
    element found;
    uint32_t position = 0;
    uint32_t held = 0;
    for (uint32_t rest = tlv_array_get_num_tlvs(tlv_array, 1); rest > 0; --rest) {
        const uint32_t error =
            tlv_array_get_next_tlv(tlv_array, &found.type, &found.length, &found.value, 1, &position);
        if (error != 0) {
            std::printf("%s: Error 0x%x in tlv_array_get_next_tlv()\n", "pm_parse_port_info", error);
        }
        if (found.value == nullptr || !belongs_to(wire_if_index, found)) continue;
        store_attribute(found, record, held);
    }
}

}  // namespace

uint32_t pm_parse_port_info(const void *base_record, const void *tlv_array, pm_port_info_t *record) {
    const auto *const base = static_cast<const uint8_t *>(base_record);
    pm_parse_port_info_base(base, record);
    if (tlv_array != nullptr) store_attributes(base, tlv_array, record);
    return 0;
}
