// SPDX-License-Identifier: Apache-2.0
// configuration.h: what clients changed since the chassis file. It stands by itself: it may name interfaces that the
// chassis does not have at the moment, and attributes that they do not have; these wait.
#ifndef VIRTUAL_SWITCH_CHASSIS_CONFIGURATION_H
#define VIRTUAL_SWITCH_CHASSIS_CONFIGURATION_H

#include <set>

#include "chassis/port_settings.h"

namespace virtual_switch {

// Values by number of the attribute.
using attribute_values = std::map<uint8_t, setting_value>;

struct configuration {
    std::map<if_index_t, attribute_values> settings;
    std::set<if_index_t> created;  // sub-interfaces and loopbacks
    std::set<if_index_t> deleted;  // those of the chassis file that are gone

    // An interface that is not there begins with the defaults of its kind, whatever the chassis file says.
    void create(if_index_t if_index) { created.insert(if_index); }

    // Forgets all that was configured for the interface as well.
    void remove(if_index_t if_index, const chassis_model &chassis);

    bool operator==(const configuration &) const = default;
};

// How many interfaces clients may create, so that the records of all fit an answer.
inline constexpr size_t most_created_interfaces = 16384;

// The chassis of the file with what was configured, settled.
chassis_model configured(chassis_model chassis, const configuration &changes);

}  // namespace virtual_switch

#endif
