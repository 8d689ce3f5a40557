// SPDX-License-Identifier: Apache-2.0
// The counters that line cards keep of Ethernet-like ports and FCIP tunnels.
#ifndef PMCTL_SWITCH_INTERFACE_COUNTERS_H
#define PMCTL_SWITCH_INTERFACE_COUNTERS_H

#include "port_mgr/ethernet_stats.h"

namespace pmctl {

// Whether interfaces of this kind have counters. For a sub-interface its port answers.
bool has_counters(if_index_t index);

// Both throw query_refused, which names the interface and what went wrong with it, or switch_unavailable when asking on
// is of no use.
pm_eth_stats_t read_counters(if_index_t index);

// Sets the counters of this one interface to 0.
void clear_counters(if_index_t index);

}  // namespace pmctl

#endif
