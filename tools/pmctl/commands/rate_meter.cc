// SPDX-License-Identifier: Apache-2.0
#include "commands/rate_meter.h"

#include <algorithm>
#include <cmath>

namespace pmctl {
namespace {

uint64_t rate(uint64_t now, uint64_t before, double seconds) {
    constexpr double too_much = 18446744073709551616.0;  // 2 to the power of 64
    const uint64_t counted = now >= before ? now - before : now;
    const double per_second = std::round(static_cast<double>(counted) / seconds);
    return per_second < too_much ? static_cast<uint64_t>(per_second) : no_rate - 1;
}

traffic_rates rates(const pm_eth_traffic_t &now, const pm_eth_traffic_t &before, double seconds) {
    return {.bytes = rate(now.octets, before.octets, seconds),
            .frames = rate(now.frames, before.frames, seconds),
            .errors = rate(now.errors, before.errors, seconds)};
}

}  // namespace

void rate_meter::measure(counted_interface &of, time when) {
    const auto before = samples_.find(of.if_index);
    if (before != samples_.end()) {
        const auto &[stats, then] = before->second;
        const double seconds = std::chrono::duration<double>(when - then).count();
        if (seconds <= 0) return;
        of.rx = rates(of.stats.traffic[PM_ETH_TRAFFIC_RX], stats.traffic[PM_ETH_TRAFFIC_RX], seconds);
        of.tx = rates(of.stats.traffic[PM_ETH_TRAFFIC_TX], stats.traffic[PM_ETH_TRAFFIC_TX], seconds);
    }
    samples_[of.if_index] = {of.stats, when};
}

}  // namespace pmctl
