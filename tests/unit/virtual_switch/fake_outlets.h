// SPDX-License-Identifier: Apache-2.0
// fake_outlets.h: the state of a switch whose changes go nowhere.
#ifndef TESTS_UNIT_VIRTUAL_SWITCH_FAKE_OUTLETS_H
#define TESTS_UNIT_VIRTUAL_SWITCH_FAKE_OUTLETS_H

#include "chassis/chassis_file.h"
#include "chassis/switch_state.h"

inline virtual_switch::switch_state state_of(std::string_view chassis,
                                             virtual_switch::switch_clock clock = virtual_switch::started_clock()) {
    return {virtual_switch::parse_chassis(chassis),
            {},
            {[](const virtual_switch::chassis_model &) {}, [](const virtual_switch::configuration &) {}},
            std::move(clock)};
}

#endif
