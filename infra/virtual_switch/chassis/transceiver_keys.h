// SPDX-License-Identifier: Apache-2.0
// transceiver_keys.h: what a chassis file may say of a transceiver.
#ifndef VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_KEYS_H
#define VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_KEYS_H

#include <span>

#include "chassis/section.h"
#include "chassis/transceiver_plan.h"

namespace virtual_switch {

// Keys of what stands in the pages, in the order they are documented, and of the quantities that it reads; and both.
std::span<const std::string_view> page_keys();
std::span<const std::string_view> quantity_keys();
std::span<const std::string_view> transceiver_keys();

// Keys in the table of a quantity.
inline constexpr std::array<std::string_view, 7> reading_keys{"value",     "high_alarm", "high_warning", "low_warning",
                                                              "low_alarm", "drift",      "period"};

// Changes a plan as the keys of a section say. Everything throws chassis_error.
void apply_page_keys(const section &from, transceiver_plan &to);
void apply_quantity_keys(const section &from, transceiver_plan &to);

// The same of a transceiver whose pages are given: only drifts.
void apply_drift_keys(const section &from, transceiver &to);

}  // namespace virtual_switch

#endif
