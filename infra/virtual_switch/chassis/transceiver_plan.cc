// SPDX-License-Identifier: Apache-2.0
#include "chassis/transceiver_plan.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "protocol/byte_order.h"
#include "sff8472/checksum.h"
#include "sff8472/identification.h"

namespace virtual_switch {
namespace {

namespace serial_id = sff8472::serial_id;
namespace diagnostic = sff8472::diagnostic;
using sff8472::quantity;

constexpr uint8_t revision_12 = 0x08;

// Units are slope / 256 times a word, and an offset.
struct line {
    uint16_t slope;
    int16_t offset;
};

struct calibration_constants {
    std::array<line, diagnostic::calibration.size()> lines;
    float rx_power;  // the linear coefficient; the others are 0
};

constexpr calibration_constants neutral{{line{256, 0}, {256, 0}, {256, 0}, {256, 0}}, 1.0F};
constexpr calibration_constants host{{line{272, -256}, {258, 20}, {384, -10}, {320, -5}}, 1.25F};

uint16_t word_of(const calibration_constants &constants, quantity of, int32_t unit) {
    const auto nearest = [](double word, double least, double most) {
        return static_cast<uint16_t>(std::lround(std::clamp(word, least, most)));
    };
    if (of == quantity::rx_power) return nearest(unit / static_cast<double>(constants.rx_power), 0, 65535);
    const auto [slope, offset] = constants.lines[static_cast<size_t>(of)];
    const double word = (unit - offset) * 256.0 / slope;
    return of == quantity::temperature ? nearest(word, -32768, 32767) : nearest(word, 0, 65535);
}

void write_constants(const calibration_constants &constants, diagnostic_bytes &page) {
    constexpr size_t linear_coefficient = diagnostic::rx_power_polynomial + 3 * sizeof(float);
    pm::store_be32(&page[linear_coefficient], std::bit_cast<uint32_t>(constants.rx_power));
    for (size_t i = 0; i < constants.lines.size(); ++i) {
        uint8_t *const at = &page[diagnostic::calibration[i]];
        pm::store_be16(at, constants.lines[i].slope);
        pm::store_be16(at + 2, static_cast<uint16_t>(constants.lines[i].offset));
    }
}

diagnostic_bytes diagnostics_of(const transceiver_plan &plan) {
    diagnostic_bytes page{};
    const calibration_constants &constants = plan.calibrated == calibration::external ? host : neutral;
    write_constants(constants, page);
    for (size_t i = 0; i < sff8472::quantities; ++i) {
        const auto write = [&](size_t offset, int32_t unit) {
            pm::store_be16(&page[offset], word_of(constants, static_cast<quantity>(i), unit));
        };
        const size_t thresholds = diagnostic::thresholds + 8 * i;
        write(thresholds, plan.readings[i].high_alarm);
        write(thresholds + 2, plan.readings[i].low_alarm);
        write(thresholds + 4, plan.readings[i].high_warning);
        write(thresholds + 6, plan.readings[i].low_warning);
        write(diagnostic::readings + 2 * i, plan.readings[i].value);
    }
    page[diagnostic::checksum] = sff8472::checksum(std::span(page).first(diagnostic::checksum));
    return page;
}

uint8_t diagnostic_type_of(calibration calibrated) {
    namespace type = sff8472::diagnostic_type;
    if (calibrated == calibration::none) return 0;
    const uint8_t by = calibrated == calibration::external ? type::externally_calibrated : type::internally_calibrated;
    return static_cast<uint8_t>(type::implemented | type::average_rx_power | by);
}

void seal(serial_id_bytes &page) {
    const std::span all(page);
    page[serial_id::base_checksum] = sff8472::checksum(all.first(serial_id::base_checksum));
    constexpr size_t extended = serial_id::extended_checksum - serial_id::options;
    page[serial_id::extended_checksum] = sff8472::checksum(all.subspan(serial_id::options, extended));
}

}  // namespace

transceiver build(const transceiver_plan &plan) {
    transceiver built{.serial_id = plan.serial_id, .drifts = plan.drifts};
    built.has_diagnostics = plan.calibrated != calibration::none;
    built.serial_id[serial_id::extended_identifier] = 4;
    built.serial_id[serial_id::diagnostic_type] = diagnostic_type_of(plan.calibrated);
    built.serial_id[serial_id::compliance] = built.has_diagnostics ? revision_12 : 0;
    seal(built.serial_id);
    if (built.has_diagnostics) built.diagnostics = diagnostics_of(plan);
    return built;
}

void put_text(serial_id_bytes &page, sff8472::field to, std::string_view text) {
    const auto begin = page.begin() + static_cast<ptrdiff_t>(to.offset);
    std::fill(std::copy(text.begin(), text.end(), begin), begin + static_cast<ptrdiff_t>(to.size), ' ');
}

bool advance_serial_number(transceiver &of, uint32_t by) {
    if (by == 0) return true;
    const std::string text = sff8472::identify(of.serial_id).serial_number;
    const size_t digits = text.find_last_not_of("0123456789") + 1;
    const std::string old_number = text.substr(digits);
    std::string number = std::to_string((old_number.empty() ? 0 : std::stoull(old_number)) + by);
    if (number.size() < old_number.size()) number.insert(0, old_number.size() - number.size(), '0');
    if (digits + number.size() > serial_id::serial_number.size) return false;
    put_text(of.serial_id, serial_id::serial_number, text.substr(0, digits) + number);
    seal(of.serial_id);
    return true;
}

}  // namespace virtual_switch
