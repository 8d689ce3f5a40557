// SPDX-License-Identifier: Apache-2.0
// naive_statistics.h: what counters of line cards and of the kernel mean.
#ifndef MODEL_NAIVE_STATISTICS_H
#define MODEL_NAIVE_STATISTICS_H

#include <optional>
#include <string>
#include <vector>

#include "bytes.h"
#include "port_mgr/port_mgr_common.h"

namespace model {

struct eth_outcome {
    int32_t status;
    pm_eth_stats_t stats;
    std::string printed = {};
    std::vector<std::string> reporters = {};
};

// The answer of a line card that was asked about an interface.
eth_outcome ethernet_counters(const std::optional<support::bytes> &payload, if_index_t interface);

struct net_dev_outcome {
    int32_t status;
    pm_net_dev_stats_t stats;
};

// The counters of an interface in the kernel's table.
net_dev_outcome net_dev_counters(const std::string &table, const std::string &name);

}  // namespace model

#endif
