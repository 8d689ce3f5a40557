// SPDX-License-Identifier: Apache-2.0
// switch_state.h: the one owner of what the switch is: the chassis of its file, what clients configured, and the model
// that comes of both. Every change goes through it.
#ifndef VIRTUAL_SWITCH_CHASSIS_SWITCH_STATE_H
#define VIRTUAL_SWITCH_CHASSIS_SWITCH_STATE_H

#include <functional>

#include "chassis/configuration.h"
#include "chassis/switch_clock.h"
#include "chassis/traffic_counters.h"

namespace virtual_switch {

class switch_state {
  public:
    // Where changes have to arrive before they count. Both throw std::runtime_error with one line when they cannot.
    struct outlets {
        std::function<void(const chassis_model &)> publish;  // makes the chassis database show a model
        std::function<void(const configuration &)> keep;     // makes the configuration outlive the program
    };

    // Publishes the model, or throws what the outlet throws.
    switch_state(chassis_model chassis, configuration changes, outlets to, switch_clock clock = started_clock());

    // All of them may change between two requests.
    [[nodiscard]] const chassis_model &model() const { return model_; }
    [[nodiscard]] const chassis_model &chassis() const { return chassis_; }
    [[nodiscard]] const configuration &changes() const { return changes_; }

    // How long the switch has been running.
    [[nodiscard]] switch_time now() const { return clock_(); }

    // The counters of the model's interfaces, up to now.
    [[nodiscard]] traffic_counters &counters();

    // Puts another configuration in the place of this one. When it cannot be published or kept, says so on standard
    // error, changes nothing and returns false.
    [[nodiscard]] bool change(configuration changes);

    // Puts another chassis in the place of this one, with the same configuration. Throws what the outlet throws, and
    // has changed nothing then.
    void reload(chassis_model chassis);

  private:
    void publish_and_keep(const chassis_model &model, const configuration &changes);

    // Puts another model in the place of this one, by which the counters have counted until now.
    void adopt(chassis_model model);

    chassis_model chassis_;
    configuration changes_;
    chassis_model model_;
    outlets to_;
    switch_clock clock_;
    traffic_counters counters_;
};

}  // namespace virtual_switch

#endif
