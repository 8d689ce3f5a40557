// SPDX-License-Identifier: Apache-2.0
// transceiver_plan.h: makes the pages of a transceiver from what it is to say.
#ifndef VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_PLAN_H
#define VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_PLAN_H

#include <string>
#include <string_view>

#include "chassis/transceiver.h"

namespace virtual_switch {

// Who calibrates the readings: nobody, as there are none; the transceiver; the host.
enum class calibration : uint8_t { none, internal, external };

struct transceiver_plan {
    serial_id_bytes serial_id{};  // but for checksums and what `calibrated` says
    calibration calibrated = calibration::none;
    sff8472::readings readings{};  // calibrated
    std::array<drift, sff8472::quantities> drifts{};
};

// The pages with everything that follows from the plan. Words of an externally calibrated transceiver are the nearest
// that its constants allow.
transceiver build(const transceiver_plan &plan);

// Writes a text padded with blanks; it must fit.
void put_text(serial_id_bytes &page, sff8472::field to, std::string_view text);

// Counts the number at the end of the serial number up, keeping its digits, and returns false when it does not fit.
bool advance_serial_number(transceiver &of, uint32_t by);

}  // namespace virtual_switch

#endif
