// SPDX-License-Identifier: Apache-2.0
#include "platform/if_index.h"

#include <arpa/inet.h>

#include "if_index_kinds.h"

namespace platform_dev {
namespace {

constexpr int32_t failure = -1;

const index_layout *layout_of(if_index_t index) {
    const interface_kind *kind = kind_of(index);
    return kind == nullptr ? nullptr : &kind->layout;
}

// Stores one number of an index that has a unit of the kind named.
template <typename T>
int32_t get_number(if_index_t index, unit_kind unit_is, bit_field index_layout::*field, T *out) {
    const index_layout *layout = layout_of(index);
    if (layout == nullptr || layout->unit_is != unit_is) return failure;
    *out = static_cast<T>((layout->*field).get(index));
    return 0;
}

bool is_port_channel(if_index_t index) {
    const index_layout *layout = layout_of(index);
    return layout != nullptr && layout->unit_is == unit_kind::subtype;
}

uint32_t sub_intf_mask(if_index_t index) {
    const index_layout *layout = layout_of(index);
    return layout == nullptr ? 0 : layout->sub_intf.mask();
}

int32_t compose(uint8_t type, const index_numbers &numbers, if_index_t *out) {
    return compose_index(*kind_of_type(type), numbers, out) ? 0 : failure;
}

}  // namespace
}  // namespace platform_dev

using namespace platform_dev;

int32_t if_index_get_type(if_index_t index, uint8_t *type) {
    if (index != 0 && kind_of(index) == nullptr) return failure;
    *type = static_cast<uint8_t>(type_field.get(index));
    return 0;
}

int32_t if_index_get_slot(if_index_t index, uint8_t *slot) {
    return get_number(index, unit_kind::slot, &index_layout::unit, slot);
}

int32_t if_index_get_port(if_index_t index, uint8_t *port) {
    return get_number(index, unit_kind::slot, &index_layout::number, port);
}

int32_t if_index_get_sub_intf(if_index_t index, uint16_t *sub_intf) {
    const uint32_t mask = sub_intf_mask(index);
    if (mask == 0) return failure;
    *sub_intf = static_cast<uint16_t>(index & mask);
    return 0;
}

if_index_t if_index_get_mainintf_from_subintf(if_index_t index) { return index & ~sub_intf_mask(index); }

int32_t if_index_is_port_channel_sub_interface(if_index_t index) {
    return is_port_channel(index) && (index & sub_intf_mask(index)) != 0;
}

int32_t if_index_phy_eth_get_sub_intf(if_index_t index, uint16_t *sub_intf) {
    return type_field.get(index) == IF_TYPE_ETHERNET ? if_index_get_sub_intf(index, sub_intf) : failure;
}

int32_t if_index_port_channel_get_channel_num(if_index_t index, uint16_t *channel) {
    return get_number(index, unit_kind::subtype, &index_layout::number, channel);
}

int32_t if_index_port_channel_get_subtype(if_index_t index, uint8_t *subtype) {
    return get_number(index, unit_kind::subtype, &index_layout::unit, subtype);
}

int32_t if_index_fcip_get_tunnel(if_index_t index, uint16_t *tunnel) {
    if (type_field.get(index) != IF_TYPE_FCIP) return failure;
    *tunnel = static_cast<uint16_t>(tunnel_layout.number.get(index));
    return 0;
}

int32_t if_index_phy_fc_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t) {
    return compose(IF_TYPE_FC, {slot, port, 0}, out);
}

int32_t if_index_phy_eth_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t) {
    return compose(IF_TYPE_ETHERNET, {slot, port, 0}, out);
}

int32_t if_index_port_channel_init(if_index_t *out, uint16_t channel) {
    return compose(IF_TYPE_PORT_CHANNEL, {0, channel, 0}, out);
}

int32_t if_index_fcip_port_init(if_index_t *out, uint16_t tunnel) { return compose(IF_TYPE_FCIP, {0, tunnel, 0}, out); }

uint32_t hton_if_index(if_index_t index) { return htonl(index); }

if_index_t ntoh_if_index(uint32_t wire) { return ntohl(wire); }
