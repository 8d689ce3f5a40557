// SPDX-License-Identifier: Apache-2.0
// ethernet_stats_layout.h: how requests for the counters of an interface, and the counters, travel.
#ifndef PROTOCOL_ETHERNET_STATS_LAYOUT_H
#define PROTOCOL_ETHERNET_STATS_LAYOUT_H

#include <array>

#include "port_mgr/ethernet_stats.h"
#include "protocol/cursor.h"
#include "protocol/record_codec.h"

namespace pm {

// A request: four bytes that nobody uses, the port's number on the line card in 16 bits, 18 bytes that nobody uses, the
// interface index and the request word.
inline constexpr size_t stats_request_size = 32;
inline constexpr size_t stats_request_port = 4;
inline constexpr size_t stats_request_if_index = 24;
inline constexpr size_t stats_request_word = 28;

// The number of a port that could not be found.
inline constexpr uint16_t no_line_card_port = 0xffff;

// The port bases of FCIP tunnels on a card of this type: a tunnel takes four places, behind those that some cards keep
// for themselves.
constexpr uint8_t first_tunnel_base(uint16_t card_type) {
    if (card_type >= 41 && card_type <= 43) return 18;
    return card_type == 22 || card_type == 28 ? 14 : 0;
}
constexpr uint8_t tunnel_base(uint16_t card_type, uint8_t port) {
    return static_cast<uint8_t>(first_tunnel_base(card_type) + 4u * port);
}
constexpr uint16_t tunnel_port(uint16_t card_type, uint8_t base) {
    return static_cast<uint16_t>((base - first_tunnel_base(card_type)) >> 2);
}

// The record has the same offsets in memory as on the wire, and bytes that no field names travel as they are.
inline constexpr auto eth_stats_fields = [] {
    constexpr auto field = [](size_t offset, field_kind kind, size_t count = 1) {
        return record_field{offset, offset, kind, count};
    };
    std::array<record_field, 2 * PM_ETH_TRAFFIC_CLASSES + 3> fields{};
    size_t next = 0;
    for (size_t i = 0; i < PM_ETH_TRAFFIC_CLASSES; ++i) {
        const size_t traffic = offsetof(pm_eth_stats_t, traffic) + i * sizeof(pm_eth_traffic_t);
        fields[next++] = field(traffic + offsetof(pm_eth_traffic_t, octets), field_kind::u64, 2);
        fields[next++] = field(traffic + offsetof(pm_eth_traffic_t, errors), field_kind::u32, 2);
    }
    fields[next++] = field(offsetof(pm_eth_stats_t, seconds_since_clear), field_kind::u32);
    fields[next++] = field(offsetof(pm_eth_stats_t, rx_pause_frames), field_kind::u64, 2);
    fields[next++] = field(offsetof(pm_eth_stats_t, crc_errors), field_kind::u32, 15);
    return fields;
}();

}  // namespace pm

#endif
