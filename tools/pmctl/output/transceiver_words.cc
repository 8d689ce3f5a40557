// SPDX-License-Identifier: Apache-2.0
#include "output/transceiver_words.h"

#include <cmath>

#include <fmt/core.h>

#include "output/record_member.h"

namespace pmctl {
namespace {

constexpr double powers_in_a_milliwatt = 10000;

}  // namespace

const std::array<measured_quantity, sff8472::quantities> measured_quantities{{
    {sff8472::quantity::temperature, "temperature", "Temperature (°C)", "°C", "temperature", 256, 2, false},
    {sff8472::quantity::voltage, "voltage", "Voltage (V)", "V", "voltage", 10000, 3, false},
    {sff8472::quantity::bias, "bias", "Bias current (mA)", "mA", "bias", 500, 3, false},
    {sff8472::quantity::tx_power, "tx power", "Transmit power (dBm/mW)", "TX dBm/mW", "tx_power", powers_in_a_milliwatt,
     4, true},
    {sff8472::quantity::rx_power, "rx power", "Receive power (dBm/mW)", "RX dBm/mW", "rx_power", powers_in_a_milliwatt,
     4, true},
}};

std::string oui_of(const sff8472::identification &of) {
    return fmt::format("{:02x}:{:02x}:{:02x}", of.oui[0], of.oui[1], of.oui[2]);
}

std::string metres_text(const sff8472::reach &of) { return fmt::format("{}{}", of.is_more ? ">" : "", of.metres); }

const char *reader_of(const transceiver_diagnostics &of) { return of.are_of_line_card ? "line card" : "port manager"; }

double in_unit(const measured_quantity &of, int32_t number) { return number / of.in_one; }

std::optional<double> dbm(int32_t number) {
    if (number <= 0) return std::nullopt;
    const double hundredths = std::round(1000 * std::log10(number / powers_in_a_milliwatt));
    return hundredths == 0 ? 0 : hundredths / 100;  // and not a zero with a minus
}

const char *level_words(sff8472::level level) {
    switch (level) {
        case sff8472::level::high_alarm:
            return "high alarm";
        case sff8472::level::high_warning:
            return "high warning";
        case sff8472::level::low_warning:
            return "low warning";
        case sff8472::level::low_alarm:
            return "low alarm";
        default:
            return "normal";
    }
}

std::vector<std::string> raised_names(uint16_t flags) {
    std::vector<std::string> names;
    for (const measured_quantity &each : measured_quantities) {
        const int high = sff8472::high_flag(each.of);
        if ((flags & high) != 0) names.push_back(fmt::format("{} high", each.name));
        if ((flags & high >> 1) != 0) names.push_back(fmt::format("{} low", each.name));
    }
    return names;
}

std::string quantity_text(const measured_quantity &of, int32_t number) {
    const std::string text = fmt::format("{:.{}f}", in_unit(of, number), of.decimals);
    if (!of.is_power) return text;
    const std::optional<double> level = dbm(number);
    return fmt::format("{}/{}", level ? fmt::format("{:.2f}", *level) : std::string(absent_text), text);
}

}  // namespace pmctl
