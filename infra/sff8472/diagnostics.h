// SPDX-License-Identifier: Apache-2.0
// diagnostics.h: the readings of a transceiver's diagnostic page (A2h), calibrated.
//
// A transceiver calibrates its readings itself or leaves that to the host, which then applies the constants of the page
// to readings and to thresholds alike.
#ifndef SFF8472_DIAGNOSTICS_H
#define SFF8472_DIAGNOSTICS_H

#include <array>
#include <span>

#include "sff8472/page_layout.h"

namespace sff8472 {

using diagnostic_page = std::span<const uint8_t, diagnostic::page_size>;

// In the order of the page.
enum class quantity : uint8_t { temperature, voltage, bias, tx_power, rx_power };
inline constexpr size_t quantities = 5;

// Readings are whole numbers of these units: 1/256 degree Celsius, signed; 100 microvolt; 2 microampere; 0.1 microwatt;
// 0.1 microwatt.
struct reading {
    int32_t value;
    int32_t high_alarm;
    int32_t high_warning;
    int32_t low_warning;
    int32_t low_alarm;

    bool operator==(const reading &) const = default;
};

using readings = std::array<reading, quantities>;  // by quantity

// Reads the page; `is_externally_calibrated` as the serial-id page says.
readings read_diagnostics(diagnostic_page page, bool is_externally_calibrated);

bool is_externally_calibrated(uint8_t diagnostic_type);

// The flags that a transceiver raises, as bytes 112 and 113 (alarms) and 116 and 117 (warnings) of its page hold them:
// from the top bit on high and low of each quantity in order, the first byte more significant.
struct raised_flags {
    uint16_t alarms;
    uint16_t warnings;
};
raised_flags flags_of(const readings &of);

// The flag that a quantity raises when it is high; the next lower bit is the one for low.
constexpr uint16_t high_flag(quantity of) { return static_cast<uint16_t>(0x8000 >> (2 * static_cast<int>(of))); }

enum class level : uint8_t { normal, high_alarm, high_warning, low_warning, low_alarm };

// How far out of its thresholds a quantity is; an alarm counts before a warning.
level level_of(const raised_flags &raised, quantity of);

}  // namespace sff8472

#endif
