// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/config_attribute.h"

#include <cstdio>

#include "pm_api_common/assertion.h"
#include "port_mgr/status.h"
#include "protocol/byte_order.h"
#include "protocol/config_value_kinds.h"

namespace {

using pm::value_kind;

// Copies a value from memory to its element, or back: it is the same in both directions.
void copy_value(value_kind kind, void *to, const void *from) {
    if (kind == value_kind::short_number) return pm::store_be16(to, pm::load<uint16_t>(from));
    if (kind == value_kind::word) return pm::store_be32(to, pm::load<uint32_t>(from));
    std::memcpy(to, from, pm::width_of(kind));
}

}  // namespace

uint32_t pm_encode_tlv(pm_cfg_tlv_t *element, uint8_t type, uint8_t length, const void *value) {
    PM_ASSERT(element != nullptr);
    PM_ASSERT(value != nullptr);
    element->type = type;
    element->length = length;
    const value_kind kind = pm::written_kind(type);
    if (kind == value_kind::none) {
        std::printf("%s: Type not handled - %d\n", __func__, type);
        PM_ASSERT(false);
        return PM_ERR_TLV;
    }
    copy_value(kind, element->value, value);
    return 0;
}

uint32_t pm_decode_tlv(const pm_cfg_tlv_t *element, uint8_t *type, uint8_t *length, void *value) {
    const uint8_t attribute = element->type;
    *type = attribute;
    *length = element->length;
    const value_kind kind = pm::read_kind(attribute);
    if (kind == value_kind::none) return PM_ERR_TLV;
    copy_value(kind, value, element->value);
    return 0;
}
