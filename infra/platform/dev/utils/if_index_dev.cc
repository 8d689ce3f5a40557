// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/if_index_dev.h"

#include "if_index_kinds.h"

namespace platform_dev {
namespace {

// Builds an index of a type whose unit is of the kind named.
int32_t compose(uint8_t type, unit_kind unit_is, const index_numbers &numbers, if_index_t *out) {
    const interface_kind *kind = kind_of_type(type);
    if (kind == nullptr || kind->layout.unit_is != unit_is) return -1;
    return compose_index(*kind, numbers, out) ? 0 : -1;
}

}  // namespace
}  // namespace platform_dev

using namespace platform_dev;

int32_t if_index_slot_port_init(if_index_t *out, uint8_t type, uint8_t slot, uint8_t port) {
    return compose(type, unit_kind::slot, {slot, port, 0}, out);
}

int32_t if_index_number_init(if_index_t *out, uint8_t type, uint32_t number) {
    return compose(type, unit_kind::none, {0, number, 0}, out);
}

int32_t if_index_port_channel_subtype_init(if_index_t *out, uint8_t type, uint8_t subtype, uint16_t channel) {
    return compose(type, unit_kind::subtype, {subtype, channel, 0}, out);
}

int32_t if_index_sub_intf_init(if_index_t *out, if_index_t main, uint16_t sub_intf) {
    const interface_kind *kind = kind_of(main);
    if (kind == nullptr || sub_intf == 0 || sub_intf > kind->layout.sub_intf.max() ||
        kind->layout.sub_intf.get(main) != 0)
        return -1;
    *out = main | sub_intf;
    return 0;
}
