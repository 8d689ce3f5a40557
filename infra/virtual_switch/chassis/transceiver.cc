// SPDX-License-Identifier: Apache-2.0
#include "chassis/transceiver.h"

#include <algorithm>
#include <cmath>

#include "protocol/byte_order.h"

namespace virtual_switch {
namespace {

using sff8472::quantity;

// From 0 up to 1, down to -1 and back to 0 while `turn` grows by 1.
double triangle(double turn) {
    const double part = turn - std::floor(turn);
    if (part < 0.25) return 4 * part;
    return part < 0.75 ? 2 - 4 * part : 4 * part - 4;
}

// Interfaces one after the other are spread evenly over the period.
double phase_of(if_index_t if_index) {
    constexpr uint32_t golden_section = 0x9e3779b9;
    return (if_index * golden_section) / 4294967296.0;
}

bool is_power(quantity of) { return of == quantity::tx_power || of == quantity::rx_power; }

// What the module or the host multiplies words with.
double slope_of(const transceiver &of, quantity which) {
    if (!of.is_externally_calibrated()) return 1;
    return pm::load_be16(&of.diagnostics[sff8472::diagnostic::calibration[static_cast<size_t>(which)]]) / 256.0;
}

double drifted(const transceiver &of, quantity which, double word, double wave) {
    const double swing = wave * of.drifts[static_cast<size_t>(which)].amplitude;
    if (is_power(which)) return word * std::pow(10, swing / 10);
    const double slope = slope_of(of, which);
    return slope == 0 ? word : word + swing / slope;
}

double wave_of(const drift &of, if_index_t if_index, switch_time now) {
    if (of.period == 0) return 0;
    return triangle(std::chrono::duration<double>(now).count() / of.period + phase_of(if_index));
}

bool is_dark(quantity of, optical_link link) {
    if (of == quantity::rx_power) return !link.has_light;
    return (of == quantity::bias || of == quantity::tx_power) && !link.is_transmitting;
}

uint16_t to_word(double value, bool is_signed) {
    const double least = is_signed ? -32768 : 0;
    const double most = is_signed ? 32767 : 65535;
    return static_cast<uint16_t>(std::lround(std::clamp(value, least, most)));
}

}  // namespace

bool transceiver::is_externally_calibrated() const {
    return sff8472::is_externally_calibrated(serial_id[sff8472::serial_id::diagnostic_type]);
}

diagnostic_bytes diagnostics_at(const transceiver &of, if_index_t if_index, optical_link link, switch_time now) {
    diagnostic_bytes page = of.diagnostics;
    for (size_t i = 0; i < sff8472::quantities; ++i) {
        const auto which = static_cast<quantity>(i);
        const bool is_signed = which == quantity::temperature;
        uint8_t *const at = &page[sff8472::diagnostic::readings + 2 * i];
        const uint16_t word = pm::load_be16(at);
        const double number = is_signed ? static_cast<int16_t>(word) : word;
        const double moved = drifted(of, which, number, wave_of(of.drifts[i], if_index, now));
        pm::store_be16(at, is_dark(which, link) ? 0 : to_word(moved, is_signed));
    }
    return page;
}

}  // namespace virtual_switch
