// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMANDS_RATE_METER_H
#define PMCTL_COMMANDS_RATE_METER_H

#include <chrono>
#include <map>

#include "output/counter_members.h"

namespace pmctl {

// How much counters went up in a second, from one reading of an interface to the next. One that went down was cleared
// or began again at 0, and has counted what it shows.
class rate_meter {
  public:
    using time = std::chrono::steady_clock::time_point;

    // Sets the rates of an interface whose counters were read at `when`; its first reading has none.
    void measure(counted_interface &of, time when);

  private:
    struct sample {
        pm_eth_stats_t stats;
        time when;
    };
    std::map<if_index_t, sample> samples_;
};

}  // namespace pmctl

#endif
