// SPDX-License-Identifier: Apache-2.0
// traffic_counters.h: what the interfaces that keep counters have counted.
#ifndef VIRTUAL_SWITCH_CHASSIS_TRAFFIC_COUNTERS_H
#define VIRTUAL_SWITCH_CHASSIS_TRAFFIC_COUNTERS_H

#include "chassis/model.h"

namespace virtual_switch {

// Counts exactly: what has been counted does not depend on how often the counters were advanced.
class traffic_counters {
  public:
    // Every interface of the model starts at 0.
    traffic_counters(const chassis_model &model, switch_time now);

    // Counts the time since the last call, in which the interfaces were as the model says: those that are up count at
    // their rates. The model is the one followed last.
    void advance(const chassis_model &model, switch_time now);

    // Interfaces that are new in the model start at 0, those that it lacks are forgotten, all others go on.
    void follow(const chassis_model &model);

    // What an interface that keeps counters has counted up to the last advance.
    [[nodiscard]] pm_eth_stats_t read(if_index_t if_index) const;

    // Lets an interface that keeps counters start at 0 again.
    void clear(if_index_t if_index);

  private:
    // How often something happened, and which part of the next time has passed, in rate times milliseconds.
    struct tally {
        uint64_t whole = 0;
        uint64_t part = 0;

        void add(uint32_t rate, switch_time elapsed, switch_time period);
    };

    struct interface_counters {
        switch_time since;
        std::array<tally, counter_table.size()> tallies{};
    };

    switch_time now_;
    std::map<if_index_t, interface_counters> interfaces_;
};

}  // namespace virtual_switch

#endif
