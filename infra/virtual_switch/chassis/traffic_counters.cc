// SPDX-License-Identifier: Apache-2.0
#include "chassis/traffic_counters.h"

namespace virtual_switch {
namespace {

void store_count(const counter &of, uint64_t count, pm_eth_stats_t &stats) {
    uint8_t *const member = reinterpret_cast<uint8_t *>(&stats) + of.member;
    if (of.size == sizeof(uint64_t)) return pm::store(member, count);
    pm::store(member, static_cast<uint32_t>(count));  // wraps, as the counter does
}

// The classes are received and transmitted ones in turn, behind the two totals in the same order.
void add_up_traffic(pm_eth_stats_t &stats) {
    constexpr size_t totals = 2;
    for (size_t i = totals; i < PM_ETH_TRAFFIC_CLASSES; ++i) {
        pm_eth_traffic_t &total = stats.traffic[i % totals];
        total.octets += stats.traffic[i].octets;
        total.frames += stats.traffic[i].frames;
        total.errors += stats.traffic[i].errors;
        total.drops += stats.traffic[i].drops;
    }
}

}  // namespace

// Whole periods apart, so that no product overflows however long it was.
void traffic_counters::tally::add(uint32_t rate, switch_time elapsed, switch_time period) {
    const auto time = static_cast<uint64_t>(elapsed.count());
    const auto of_one = static_cast<uint64_t>(period.count());
    part += rate * (time % of_one);
    whole += rate * (time / of_one) + part / of_one;
    part %= of_one;
}

traffic_counters::traffic_counters(const chassis_model &model, switch_time now) : now_(now) { follow(model); }

void traffic_counters::advance(const chassis_model &model, switch_time now) {
    const switch_time elapsed = now - now_;
    now_ = now;
    for (const auto &[if_index, settings] : model.counting) {
        const port *const at = model.find(if_index);
        if (at == nullptr || !at->is_up()) continue;
        auto &tallies = interfaces_.at(if_index).tallies;
        for (size_t i = 0; i < tallies.size(); ++i) {
            tallies[i].add(settings.rates[i], elapsed, counter_table[i].period);
        }
    }
}

void traffic_counters::follow(const chassis_model &model) {
    std::erase_if(interfaces_, [&](const auto &counted) { return model.find(counted.first) == nullptr; });
    for (const auto &[if_index, at] : model.ports) {
        if (keeping_counters.contains(at.kind)) interfaces_.try_emplace(if_index, interface_counters{now_});
    }
}

pm_eth_stats_t traffic_counters::read(if_index_t if_index) const {
    const interface_counters &of = interfaces_.at(if_index);
    pm_eth_stats_t stats{};
    for (size_t i = 0; i < of.tallies.size(); ++i) store_count(counter_table[i], of.tallies[i].whole, stats);
    add_up_traffic(stats);
    const auto counting = std::chrono::duration_cast<std::chrono::seconds>(now_ - of.since);
    stats.seconds_since_clear = static_cast<uint32_t>(counting.count());
    return stats;
}

void traffic_counters::clear(if_index_t if_index) { interfaces_.at(if_index) = interface_counters{now_}; }

}  // namespace virtual_switch
