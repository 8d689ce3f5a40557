// SPDX-License-Identifier: Apache-2.0
// The counters that line cards keep of Ethernet-like ports and FCIP tunnels.
#ifndef PMCTL_SWITCH_INTERFACE_COUNTERS_H
#define PMCTL_SWITCH_INTERFACE_COUNTERS_H

#include "port_mgr/ethernet_stats.h"
#include "switch/silent_line_cards.h"

namespace pmctl {

// Whether interfaces of this kind have counters. For a sub-interface its port answers.
bool has_counters(if_index_t index);

// Both questions throw query_refused, which names the interface and what went wrong with it, or switch_unavailable when
// asking on is of no use.
class counter_client {
  public:
    pm_eth_stats_t read(if_index_t index) { return exchange(index, PM_ETH_STATS_READ); }

    // Sets the counters of this one interface to 0.
    void clear(if_index_t index) { exchange(index, PM_ETH_STATS_CLEAR); }

  private:
    pm_eth_stats_t exchange(if_index_t index, uint32_t request_word);

    silent_line_cards silent_;
};

}  // namespace pmctl

#endif
