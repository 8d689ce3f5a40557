// SPDX-License-Identifier: Apache-2.0
#include "fake_interface_numbers.h"

#include <fmt/format.h>

#include "call_log.h"
#include "platform/if_index.h"

namespace support {
namespace {

fake_interface_numbers *active = nullptr;

using indexes = std::set<if_index_t>;
using special_numbers = std::map<if_index_t, uint16_t>;

// A number of an index: its special one, else a field of the index.
template <typename Number>
int32_t get(const char *function, if_index_t if_index, uint32_t field, const indexes &failing, Number *number,
            const special_numbers &special = {}) {
    call_log::add(fmt::format("{}({:#010x})", function, if_index));
    const bool fails = failing.contains(if_index);
    if (fails && !active->stores_on_failure) return active->failure;
    const auto found = special.find(if_index);
    *number = static_cast<Number>(found != special.end() ? found->second : field);
    return fails ? active->failure : 0;
}

int32_t build(if_index_t if_index, if_index_t *out) {
    if (active->unbuildable.contains(if_index)) return active->failure;
    *out = if_index;
    return 0;
}

int32_t build_port(const char *function, if_index_t *out, uint32_t type, uint8_t slot, uint8_t port, uint32_t fourth) {
    call_log::add(fmt::format("{}({}, {}, {})", function, slot, port, fourth));
    return build(type << 24 | static_cast<uint32_t>(slot) << 16 | static_cast<uint32_t>(port) << 8, out);
}

int32_t build_numbered(const char *function, if_index_t *out, uint32_t type, uint16_t number) {
    call_log::add(fmt::format("{}({})", function, number));
    return build(type << 24 | number, out);
}

}  // namespace

fake_interface_numbers::fake_interface_numbers() { active = this; }

fake_interface_numbers::~fake_interface_numbers() { active = nullptr; }

}  // namespace support

using support::active;

int32_t if_index_get_slot(if_index_t if_index, uint8_t *slot) {
    return support::get(__func__, if_index, if_index >> 16, active->without_slot, slot);
}

int32_t if_index_get_port(if_index_t if_index, uint8_t *port) {
    return support::get(__func__, if_index, if_index >> 8, active->without_port, port);
}

int32_t if_index_get_sub_intf(if_index_t if_index, uint16_t *sub_intf) {
    return support::get(__func__, if_index, if_index & 0xfff, active->without_sub_interface, sub_intf,
                        active->special_sub_interfaces);
}

if_index_t if_index_get_mainintf_from_subintf(if_index_t if_index) {
    support::call_log::add(fmt::format("{}({:#010x})", __func__, if_index));
    const auto found = active->special_mains.find(if_index);
    return found != active->special_mains.end() ? found->second : if_index & ~0xfffU;
}

int32_t if_index_phy_eth_get_sub_intf(if_index_t if_index, uint16_t *sub_intf) {
    return support::get(__func__, if_index, if_index & 0xff, active->without_sub_interface, sub_intf,
                        active->special_sub_interfaces);
}

int32_t if_index_port_channel_get_channel_num(if_index_t if_index, uint16_t *channel) {
    return support::get(__func__, if_index, if_index, active->without_channel, channel, active->special_channels);
}

int32_t if_index_port_channel_get_subtype(if_index_t if_index, uint8_t *subtype) {
    return support::get(__func__, if_index, if_index >> 16, active->without_subtype, subtype);
}

int32_t if_index_fcip_get_tunnel(if_index_t if_index, uint16_t *tunnel) {
    return support::get(__func__, if_index, if_index, active->without_tunnel, tunnel, active->special_tunnels);
}

int32_t if_index_phy_fc_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t fourth) {
    return support::build_port(__func__, out, 1, slot, port, fourth);
}

int32_t if_index_phy_eth_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t fourth) {
    return support::build_port(__func__, out, 2, slot, port, fourth);
}

int32_t if_index_port_channel_init(if_index_t *out, uint16_t channel) {
    return support::build_numbered(__func__, out, 4, channel);
}

int32_t if_index_fcip_port_init(if_index_t *out, uint16_t tunnel) {
    return support::build_numbered(__func__, out, 10, tunnel);
}
