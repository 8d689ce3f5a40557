// SPDX-License-Identifier: Apache-2.0
#include "chassis/switch_state.h"

#include <exception>
#include <string>
#include <utility>

#include "messages.h"

namespace virtual_switch {

switch_state::switch_state(chassis_model chassis, configuration changes, outlets to, switch_clock clock)
    : chassis_(std::move(chassis)),
      changes_(std::move(changes)),
      model_(configured(chassis_, changes_)),
      to_(std::move(to)),
      clock_(std::move(clock)),
      counters_(model_, now()) {
    to_.publish(model_);
}

traffic_counters &switch_state::counters() {
    counters_.advance(model_, now());
    return counters_;
}

void switch_state::adopt(chassis_model model) {
    counters_.advance(model_, now());
    counters_.follow(model);
    model_ = std::move(model);
}

// The old model was published before, so it can be once more.
void switch_state::publish_and_keep(const chassis_model &model, const configuration &changes) {
    to_.publish(model);
    try {
        to_.keep(changes);
    } catch (...) {
        to_.publish(model_);
        throw;
    }
}

bool switch_state::change(configuration changes) {
    if (changes == changes_) return true;
    try {
        chassis_model model = configured(chassis_, changes);
        publish_and_keep(model, changes);
        adopt(std::move(model));
        changes_ = std::move(changes);
        return true;
    } catch (const std::exception &error) {
        say(std::string("not configured: ") + error.what());
        return false;
    }
}

void switch_state::reload(chassis_model chassis) {
    chassis_model model = configured(chassis, changes_);
    to_.publish(model);
    chassis_ = std::move(chassis);
    adopt(std::move(model));
}

}  // namespace virtual_switch
