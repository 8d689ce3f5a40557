// SPDX-License-Identifier: Apache-2.0
#include "sff8472/diagnostics.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace sff8472 {
namespace {

uint16_t word_at(diagnostic_page page, size_t offset) {
    return static_cast<uint16_t>(page[offset] << 8 | page[offset + 1]);
}

float float_at(diagnostic_page page, size_t offset) {
    return std::bit_cast<float>(uint32_t{word_at(page, offset)} << 16 | word_at(page, offset + 2));
}

int32_t as_signed(uint16_t word) { return static_cast<int16_t>(word); }

// A word of the page as the number that it stands for, before calibration.
int32_t number_of(quantity of, uint16_t word) { return of == quantity::temperature ? as_signed(word) : word; }

// The nearest number that the quantity can have.
int32_t to_unit(quantity of, double value) {
    if (std::isnan(value)) return 0;
    const bool is_signed = of == quantity::temperature;
    return static_cast<int32_t>(
        std::lround(std::clamp(value, is_signed ? -32768.0 : 0.0, is_signed ? 32767.0 : 65535.0)));
}

double rx_power(diagnostic_page page, int32_t number) {
    constexpr size_t coefficients = 5;
    double power = 0;
    for (size_t i = 0; i < coefficients; ++i) {
        power = power * number + float_at(page, diagnostic::rx_power_polynomial + i * sizeof(float));
    }
    return power;
}

// Slopes count 1/256, offsets count units of the quantity.
double linear(diagnostic_page page, size_t at, int32_t number) {
    return word_at(page, at) / 256.0 * number + as_signed(word_at(page, at + 2));
}

double calibrated(diagnostic_page page, quantity of, int32_t number) {
    if (of == quantity::rx_power) return rx_power(page, number);
    return linear(page, diagnostic::calibration[static_cast<size_t>(of)], number);
}

}  // namespace

bool is_externally_calibrated(uint8_t type) { return (type & diagnostic_type::externally_calibrated) != 0; }

readings read_diagnostics(diagnostic_page page, bool is_externally_calibrated) {
    readings all{};
    for (size_t i = 0; i < quantities; ++i) {
        const auto of = static_cast<quantity>(i);
        const auto read = [&](size_t offset) {
            const int32_t number = number_of(of, word_at(page, offset));
            return is_externally_calibrated ? to_unit(of, calibrated(page, of, number)) : number;
        };
        const size_t thresholds = diagnostic::thresholds + i * 8;
        all[i] = {.value = read(diagnostic::readings + i * 2),
                  .high_alarm = read(thresholds),
                  .high_warning = read(thresholds + 4),
                  .low_warning = read(thresholds + 6),
                  .low_alarm = read(thresholds + 2)};
    }
    return all;
}

raised_flags flags_of(const readings &of) {
    raised_flags raised{};
    for (size_t i = 0; i < quantities; ++i) {
        const reading &each = of[i];
        const uint16_t high = high_flag(static_cast<quantity>(i));
        const auto low = static_cast<uint16_t>(high >> 1);
        if (each.value > each.high_alarm) raised.alarms |= high;
        if (each.value < each.low_alarm) raised.alarms |= low;
        if (each.value > each.high_warning) raised.warnings |= high;
        if (each.value < each.low_warning) raised.warnings |= low;
    }
    return raised;
}

level level_of(const raised_flags &raised, quantity of) {
    const int high = high_flag(of);
    const int low = high >> 1;
    if ((raised.alarms & high) != 0) return level::high_alarm;
    if ((raised.alarms & low) != 0) return level::low_alarm;
    if ((raised.warnings & high) != 0) return level::high_warning;
    return (raised.warnings & low) != 0 ? level::low_warning : level::normal;
}

}  // namespace sff8472
