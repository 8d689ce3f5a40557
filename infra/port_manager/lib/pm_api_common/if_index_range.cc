// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/if_index_range.h"

#include "platform/if_index.h"
#include "pm_api_common/slot_count.h"
#include "port_mgr/status.h"

namespace {

struct slot_port {
    uint8_t slot;
    uint8_t port;

    [[nodiscard]] bool read(if_index_t if_index) {
        return if_index_get_slot(if_index, &slot) == 0 && if_index_get_port(if_index, &port) == 0;
    }
};

// Ports of one slot.
struct port_range {
    slot_port first;
    slot_port last;

    // False unless the range is valid.
    [[nodiscard]] bool read(const pm_if_index_range_t &range) {
        if (!first.read(range.first) || !last.read(range.last)) return false;
        const uint8_t slots = pm::slot_count();
        return first.slot == last.slot && first.slot < slots && first.port <= last.port;
    }

    [[nodiscard]] uint32_t count() const { return uint32_t{last.port} - first.port + 1; }
};

// Numbered interfaces: port channels and tunnels. A number that cannot be read is 0.
struct number_range {
    uint16_t first = 0;
    uint16_t last = 0;

    // Wraps around when the range runs backwards.
    [[nodiscard]] uint32_t count() const { return uint32_t{last} - first + 1; }

    // False when it lies beyond the last.
    [[nodiscard]] bool number_at(uint32_t offset, uint16_t *number) const {
        if (uint64_t{first} + offset > last) return false;
        *number = static_cast<uint16_t>(first + offset);
        return true;
    }
};

using number_getter = int32_t (*)(if_index_t, uint16_t *);

template <number_getter Get>
number_range numbers_of(const pm_if_index_range_t &range) {
    number_range numbers;
    Get(range.first, &numbers.first);
    Get(range.last, &numbers.last);
    return numbers;
}

bool is_backwards(const pm_if_index_range_t &range) { return range.last < range.first; }

// Counts

uint32_t count_ports(const pm_if_index_range_t &range, uint32_t *count) {
    port_range ports;
    if (!ports.read(range)) return PM_ERR_INVALID_RANGE;
    *count = ports.count();
    return 0;
}

uint32_t count_sub_interfaces(const pm_if_index_range_t &range, uint32_t *count) {
    uint16_t first;
    uint16_t last;
    if (if_index_phy_eth_get_sub_intf(range.first, &first) != 0) return PM_ERR_INVALID_RANGE;
    if (if_index_phy_eth_get_sub_intf(range.last, &last) != 0) return PM_ERR_INVALID_RANGE;
    if (last < first) return PM_ERR_INVALID_RANGE;
    *count = uint32_t{last} - first + 1;
    return 0;
}

uint32_t count_ethernet(const pm_if_index_range_t &range, uint32_t *count) {
    port_range ports;
    if (!ports.read(range)) return PM_ERR_INVALID_RANGE;
    if (ports.first.port == ports.last.port) return count_sub_interfaces(range, count);
    *count = ports.count();
    return 0;
}

uint32_t count_channels(const pm_if_index_range_t &range, uint32_t *count) {
    if (is_backwards(range)) return PM_ERR_INVALID_RANGE;
    *count = numbers_of<if_index_port_channel_get_channel_num>(range).count();
    return 0;
}

uint32_t count_single(const pm_if_index_range_t &, uint32_t *count) {
    *count = 1;
    return 0;
}

// Stricter than the steps in what can be read, and laxer in order: a range that runs backwards wraps around.
uint32_t count_tunnels(const pm_if_index_range_t &range, uint32_t *count) {
    number_range tunnels;
    if (if_index_fcip_get_tunnel(range.first, &tunnels.first) != 0) return PM_ERR_INVALID_RANGE;
    if (if_index_fcip_get_tunnel(range.last, &tunnels.last) != 0) return PM_ERR_INVALID_RANGE;
    *count = tunnels.count();
    return 0;
}

// Members. The builders get numbers that came from indexes, so that they cannot fail.

using port_builder = int32_t (*)(if_index_t *, uint8_t slot, uint8_t port, uint32_t);

template <port_builder Build>
uint32_t port_at(const pm_if_index_range_t &range, uint32_t offset, if_index_t *member) {
    port_range ports;
    if (!ports.read(range)) return PM_ERR_INVALID_RANGE;
    const auto port = static_cast<uint8_t>(ports.first.port + offset);
    if (port > ports.last.port) return PM_ERR_REJECTED;
    Build(member, ports.first.slot, port, 0);
    return 0;
}

using number_builder = int32_t (*)(if_index_t *, uint16_t number);

template <number_getter Get, number_builder Build>
uint32_t numbered_at(const pm_if_index_range_t &range, uint32_t offset, if_index_t *member) {
    uint16_t number;
    if (is_backwards(range) || !numbers_of<Get>(range).number_at(offset, &number)) return PM_ERR_INVALID_RANGE;
    Build(member, number);
    return 0;
}

constexpr auto channel_at = numbered_at<if_index_port_channel_get_channel_num, if_index_port_channel_init>;
constexpr auto tunnel_at = numbered_at<if_index_fcip_get_tunnel, if_index_fcip_port_init>;

uint32_t refuse_member(const pm_if_index_range_t &, uint32_t, if_index_t *) { return PM_ERR_INVALID_RANGE; }

struct range_kind {
    uint8_t type;
    uint32_t (*count)(const pm_if_index_range_t &, uint32_t *count);
    uint32_t (*member)(const pm_if_index_range_t &, uint32_t offset, if_index_t *member);
};

constexpr range_kind range_kinds[] = {
    {IF_TYPE_FC, count_ports, port_at<if_index_phy_fc_port_init>},
    {IF_TYPE_ETHERNET, count_ethernet, port_at<if_index_phy_eth_port_init>},
    {IF_TYPE_PORT_CHANNEL, count_channels, channel_at},
    {IF_TYPE_MGMT, count_single, refuse_member},
    {IF_TYPE_FCIP, count_tunnels, tunnel_at},
    {IF_TYPE_SLOT_PORT, count_ports, refuse_member},
    {IF_TYPE_ETHERNET_KIND, count_ports, port_at<if_index_phy_eth_port_init>},
    {IF_TYPE_BUNDLE, count_channels, channel_at},
};

// The kind of both ends. Returns a status.
uint32_t find_kind(const pm_if_index_range_t &range, const range_kind **kind) {
    uint8_t type;
    uint8_t last_type;
    if (const int32_t status = if_index_get_type(range.first, &type); status != 0) return static_cast<uint32_t>(status);
    if (const int32_t status = if_index_get_type(range.last, &last_type); status != 0)
        return static_cast<uint32_t>(status);
    if (type != last_type) return PM_ERR_INVALID_RANGE;
    for (const range_kind &each : range_kinds) {
        if (each.type != type) continue;
        *kind = &each;
        return 0;
    }
    return PM_ERR_INVALID_RANGE;
}

}  // namespace

uint32_t pm_get_num_ports_in_if_index_range(if_index_t first, if_index_t last, uint32_t *count) {
    *count = 0;
    const pm_if_index_range_t range{first, last};
    const range_kind *kind;
    if (const uint32_t status = find_kind(range, &kind); status != 0) return status;
    return kind->count(range, count);
}

uint32_t pm_get_if_index_in_range(if_index_t first, if_index_t last, if_index_t *member, uint32_t offset) {
    if (first == last && offset == 0) {
        *member = first;
        return 0;
    }
    const pm_if_index_range_t range{first, last};
    const range_kind *kind;
    if (const uint32_t status = find_kind(range, &kind); status != 0) return status;
    return kind->member(range, offset, member);
}
