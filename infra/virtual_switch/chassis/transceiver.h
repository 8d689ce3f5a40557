// SPDX-License-Identifier: Apache-2.0
// transceiver.h: a transceiver as its two pages, by SFF-8472, and how its readings move.
#ifndef VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_H
#define VIRTUAL_SWITCH_CHASSIS_TRANSCEIVER_H

#include <array>
#include <span>

#include "chassis/switch_clock.h"
#include "platform/types.h"
#include "sff8472/diagnostics.h"

namespace virtual_switch {

// How a reading moves: to both sides of the one in the page, there and back in a period.
struct drift {
    double amplitude = 0;  // of temperature, voltage and bias in their units; of powers in dB
    double period = 0;     // seconds; 0 when it stays
};

using serial_id_bytes = std::array<uint8_t, sff8472::serial_id::page_size>;
using diagnostic_bytes = std::array<uint8_t, sff8472::diagnostic::page_size>;

struct transceiver {
    serial_id_bytes serial_id{};
    diagnostic_bytes diagnostics{};  // zeros when there is no such page
    bool has_diagnostics = false;
    std::array<drift, sff8472::quantities> drifts{};  // by quantity

    [[nodiscard]] bool is_externally_calibrated() const;
};

// What the surroundings do to the readings.
struct optical_link {
    bool is_transmitting;  // the laser is on
    bool has_light;        // some is received
};

// The diagnostic page as it reads at a moment. Readings move as words of the page, whatever calibrates them; each
// interface is at another point of the period.
diagnostic_bytes diagnostics_at(const transceiver &of, if_index_t if_index, optical_link link, switch_time now);

}  // namespace virtual_switch

#endif
