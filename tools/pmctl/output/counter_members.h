// SPDX-License-Identifier: Apache-2.0
// The counters of interfaces: how people and programs see them.
#ifndef PMCTL_OUTPUT_COUNTER_MEMBERS_H
#define PMCTL_OUTPUT_COUNTER_MEMBERS_H

#include <limits>

#include "output/record_member.h"
#include "port_mgr/ethernet_stats.h"
#include "port_mgr/net_dev_stats.h"

namespace pmctl {

// Where nothing was measured.
inline constexpr uint64_t no_rate = std::numeric_limits<uint64_t>::max();

// Of the traffic in one direction, per second.
struct PM_PACKED traffic_rates {
    uint64_t bytes = no_rate;
    uint64_t frames = no_rate;
    uint64_t errors = no_rate;
};

// The counters of an interface of the switch.
struct PM_PACKED counted_interface {
    if_index_t if_index;
    pm_eth_stats_t stats;
    traffic_rates rx;
    traffic_rates tx;
};

// Every counter, and every rate.
std::span<const member_group> counter_groups();

// Tables of the traffic with a line for each interface, with rates when they are measured, and tables of the errors
// with a line for each interface that has any.
std::vector<sheet> counter_sheets(const std::vector<counted_interface> &interfaces, bool with_rates);

// The counters of a network interface of this machine.
struct PM_PACKED host_interface {
    char name[512];
    pm_net_dev_stats_t stats;
};

std::span<const member_group> host_interface_groups();

}  // namespace pmctl

#endif
