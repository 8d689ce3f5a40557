// SPDX-License-Identifier: Apache-2.0
// counter_table.h: the counters of an interface that advance by themselves, and the keys by which files say how fast.
// The totals of received and transmitted traffic follow from their classes.
#ifndef VIRTUAL_SWITCH_CHASSIS_COUNTER_TABLE_H
#define VIRTUAL_SWITCH_CHASSIS_COUNTER_TABLE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "chassis/switch_clock.h"
#include "port_mgr/ethernet_stats.h"

namespace virtual_switch {

struct counter {
    std::string_view key;
    size_t member;       // offset in pm_eth_stats_t
    size_t size;         // bytes of the member
    switch_time period;  // what its rate refers to
};

inline constexpr switch_time per_second = std::chrono::seconds(1);
inline constexpr switch_time per_hour = std::chrono::hours(1);

#define PM_COUNTER(key, member, period) \
    counter { key, offsetof(pm_eth_stats_t, member), sizeof(pm_eth_stats_t::member), period }
#define PM_TRAFFIC(key, index)                                        \
    PM_COUNTER(key "_octets", traffic[index].octets, per_second),     \
        PM_COUNTER(key "_frames", traffic[index].frames, per_second), \
        PM_COUNTER(key "_errors", traffic[index].errors, per_hour),   \
        PM_COUNTER(key "_drops", traffic[index].drops, per_hour)
#define PM_EVENT(member) PM_COUNTER(#member, member, per_hour)

inline constexpr std::array counter_table{
    PM_TRAFFIC("rx_unicast", PM_ETH_TRAFFIC_RX_UNICAST),
    PM_TRAFFIC("tx_unicast", PM_ETH_TRAFFIC_TX_UNICAST),
    PM_TRAFFIC("rx_multicast", PM_ETH_TRAFFIC_RX_MULTICAST),
    PM_TRAFFIC("tx_multicast", PM_ETH_TRAFFIC_TX_MULTICAST),
    PM_TRAFFIC("rx_broadcast", PM_ETH_TRAFFIC_RX_BROADCAST),
    PM_TRAFFIC("tx_broadcast", PM_ETH_TRAFFIC_TX_BROADCAST),
    PM_EVENT(rx_pause_frames),
    PM_EVENT(tx_pause_frames),
    PM_EVENT(crc_errors),
    PM_EVENT(alignment_errors),
    PM_EVENT(symbol_errors),
    PM_EVENT(undersize_frames),
    PM_EVENT(oversize_frames),
    PM_EVENT(fragments),
    PM_EVENT(jabbers),
    PM_EVENT(rx_overruns),
    PM_EVENT(tx_underruns),
    PM_EVENT(collisions),
    PM_EVENT(late_collisions),
    PM_EVENT(excessive_collisions),
    PM_EVENT(deferred_frames),
    PM_EVENT(carrier_losses),
    PM_EVENT(link_resets),
};
#undef PM_EVENT
#undef PM_TRAFFIC
#undef PM_COUNTER

inline constexpr std::string_view unreachable_key = "unreachable";

// All keys of a chassis file, in the order they are documented.
inline constexpr auto counter_keys = [] {
    std::array<std::string_view, counter_table.size() + 1> keys{};
    std::ranges::transform(counter_table, keys.begin(), &counter::key);
    keys.back() = unreachable_key;
    return keys;
}();

// How an interface counts.
struct counter_settings {
    std::array<uint32_t, counter_table.size()> rates{};  // while it is up
    bool unreachable = false;                            // its line card cannot reach it
};

}  // namespace virtual_switch

#endif
