// SPDX-License-Identifier: Apache-2.0
#include "chassis/transceiver_keys.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

#include "chassis/chassis_error.h"
#include "protocol/byte_order.h"
#include "sff8472/code_names.h"

namespace virtual_switch {
namespace {

namespace serial_id = sff8472::serial_id;
using page_writer = void (*)(const document_value &value, const std::string &key, transceiver_plan &to);

// ------------------------------------------------------------------------------------------------------------- pages

template <const auto &codes>
constexpr auto names_of = words_of(codes, &std::decay_t<decltype(codes.front())>::name);

template <const auto &codes, size_t offset>
void write_code(const document_value &value, const std::string &key, transceiver_plan &to) {
    to.serial_id[offset] = codes[read_word(value, key, names_of<codes>)].code;
}

// Whatever goes with another technology is gone: codes, lengths and wavelength, and of a cable the diagnostics.
void write_technology(const document_value &value, const std::string &key, transceiver_plan &to) {
    const auto &technology = sff8472::technologies[read_word(value, key, names_of<sff8472::technologies>)];
    uint8_t *const page = to.serial_id.data();
    std::fill(page + serial_id::ethernet_10g_codes, page + serial_id::encoding, uint8_t{0});
    std::fill(page + serial_id::length_single_mode_km, page + serial_id::vendor_name.offset, uint8_t{0});
    std::fill(page + serial_id::wavelength, page + serial_id::base_checksum, uint8_t{0});
    page[technology.offset] = technology.bit;
    if (technology.over != sff8472::medium::fibre) to.calibrated = calibration::none;
}

struct fc_speed {
    uint32_t mbit;
    uint8_t bit;
};
constexpr std::array<fc_speed, 7> fc_speeds{
    {{1000, 0x01}, {2000, 0x04}, {4000, 0x10}, {8000, 0x40}, {10000, 0x80}, {16000, 0x20}, {32000, 0x08}}};

void write_fc_speeds(const document_value &value, const std::string &key, transceiver_plan &to) {
    uint8_t bits = 0;
    for (const document_value &each : read_array(value, key, fc_speeds.size())) {
        const uint32_t mbit = read_number(each, key, {0, UINT32_MAX});
        const auto *const known = std::ranges::find(fc_speeds, mbit, &fc_speed::mbit);
        if (known == fc_speeds.end()) throw chassis_error(each.line, key, std::to_string(mbit) + " is no speed");
        bits |= known->bit;
    }
    to.serial_id[serial_id::fc_speed] = bits;
}

void write_bit_rate(const document_value &value, const std::string &key, transceiver_plan &to) {
    constexpr uint8_t see_maximum = 0xff;
    constexpr uint32_t unit = 100;
    constexpr uint32_t coarse_unit = 250;
    const uint32_t rate = read_number(value, key, {0, coarse_unit * 255});
    const bool fits = rate < unit * see_maximum;
    to.serial_id[serial_id::bit_rate] = fits ? static_cast<uint8_t>(rate / unit) : see_maximum;
    to.serial_id[serial_id::bit_rate_max] = fits ? 0 : static_cast<uint8_t>(rate / coarse_unit);
}

void write_wavelength(const document_value &value, const std::string &key, transceiver_plan &to) {
    const auto hundredths = static_cast<uint32_t>(std::lround(100 * read_decimal(value, key, {0, 65535})));
    const auto fraction = static_cast<uint8_t>(hundredths % 100);
    if (fraction != 0 && to.serial_id[serial_id::identifier] != sff8472::dwdm_sfp) {
        throw chassis_error(value.line, key, "has a fraction, which only the form 'DWDM-SFP' can tell");
    }
    pm::store_be16(&to.serial_id[serial_id::wavelength], static_cast<uint16_t>(hundredths / 100));
    to.serial_id[serial_id::wavelength_fraction] = fraction;
}

// Single-mode fibre has two bytes, one for kilometres and one for what is below 25.
void write_single_mode(const document_value &value, const std::string &key, transceiver_plan &to) {
    constexpr uint32_t beyond = 0xff;
    const uint32_t metres = read_number(value, key, {0, 254000});
    to.serial_id[serial_id::length_single_mode_km] = static_cast<uint8_t>(metres / 1000);
    to.serial_id[serial_id::length_single_mode] = static_cast<uint8_t>(std::min(metres / 100, beyond));
}

template <size_t offset, uint32_t unit>
void write_length(const document_value &value, const std::string &key, transceiver_plan &to) {
    to.serial_id[offset] = static_cast<uint8_t>(read_number(value, key, {0, 254 * unit}) / unit);
}

template <sff8472::field to_field>
void write_text(const document_value &value, const std::string &key, transceiver_plan &to) {
    const std::string &text = read_text(value, key, to_field.size);
    if (std::any_of(text.begin(), text.end(), [](char letter) { return letter < 0; })) {
        throw chassis_error(value.line, key, "holds a letter that is not ASCII");
    }
    put_text(to.serial_id, to_field, text);
}

// The numbers between separators, each of which takes the given digits; nothing when the text is of another form.
template <size_t count>
std::optional<std::array<uint8_t, count>> cut_numbers(const std::string &text, char separator, int base) {
    std::array<uint8_t, count> numbers{};
    constexpr size_t digits = 2;
    if (text.size() != count * (digits + 1) - 1) return std::nullopt;
    for (size_t i = 0; i < count; ++i) {
        const char *const at = text.data() + i * (digits + 1);
        const auto [end, error] = std::from_chars(at, at + digits, numbers[i], base);
        if (error != std::errc() || end != at + digits || (i + 1 < count && *end != separator)) return std::nullopt;
    }
    return numbers;
}

void write_oui(const document_value &value, const std::string &key, transceiver_plan &to) {
    const std::string &text = read_text(value, key, 64);
    const auto oui = cut_numbers<serial_id::vendor_oui.size>(text, ':', 16);
    if (!oui) throw chassis_error(value.line, key, "'" + text + "' is no OUI such as '02:50:4d'");
    std::copy(oui->begin(), oui->end(), &to.serial_id[serial_id::vendor_oui.offset]);
}

// The two parts of a date code.
constexpr sff8472::field day{serial_id::date_code.offset, 6};
constexpr sff8472::field lot{day.offset + day.size, serial_id::date_code.size - day.size};

void write_date(const document_value &value, const std::string &key, transceiver_plan &to) {
    const std::string &text = read_text(value, key, 64);
    const auto date = text.starts_with("20") ? cut_numbers<3>(text.substr(2), '-', 10) : std::nullopt;
    if (!date || date->at(1) < 1 || date->at(1) > 12 || date->at(2) < 1 || date->at(2) > 31) {
        throw chassis_error(value.line, key, "'" + text + "' is no date such as '2024-05-17'");
    }
    put_text(to.serial_id, day, text.substr(2, 2) + text.substr(5, 2) + text.substr(8));
}

constexpr std::array calibration_words{
    named_value{"none", static_cast<uint32_t>(calibration::none)},
    named_value{"internal", static_cast<uint32_t>(calibration::internal)},
    named_value{"external", static_cast<uint32_t>(calibration::external)},
};

void set_calibration(const document_value &value, const std::string &key, transceiver_plan &to) {
    to.calibrated = static_cast<calibration>(read_word(value, key, calibration_words));
}

struct page_key {
    std::string_view name;
    page_writer apply;
};

// In the order in which they apply.
constexpr std::array page_key_table{
    page_key{"form", write_code<sff8472::identifiers, serial_id::identifier>},
    page_key{"technology", write_technology},
    page_key{"connector", write_code<sff8472::connectors, serial_id::connector>},
    page_key{"fc_speeds", write_fc_speeds},
    page_key{"bit_rate", write_bit_rate},
    page_key{"wavelength", write_wavelength},
    page_key{"length_single_mode", write_single_mode},
    page_key{"length_om1", write_length<serial_id::length_om1, 10>},
    page_key{"length_om2", write_length<serial_id::length_om2, 10>},
    page_key{"length_om3", write_length<serial_id::length_om3, 10>},
    page_key{"length_om4", write_length<serial_id::length_copper, 10>},
    page_key{"length_copper", write_length<serial_id::length_copper, 1>},
    page_key{"vendor", write_text<serial_id::vendor_name>},
    page_key{"oui", write_oui},
    page_key{"part_number", write_text<serial_id::part_number>},
    page_key{"revision", write_text<serial_id::revision>},
    page_key{"serial_number", write_text<serial_id::serial_number>},
    page_key{"date", write_date},
    page_key{"lot", write_text<lot>},
    page_key{"calibration", set_calibration},
};

// -------------------------------------------------------------------------------------------------------- quantities

struct quantity_key {
    std::string_view name;
    double scale;  // units of the page in one of the file's; 0 for powers, which are told in dBm
    decimal_range range;
    double most_drift;
};

// In the order of sff8472::quantity.
constexpr std::array<quantity_key, sff8472::quantities> quantity_key_table{{
    {"temperature", 256, {-128, 127.99}, 100},
    {"voltage", 10000, {0, 6.5535}, 3},
    {"bias", 500, {0, 131.07}, 100},
    {"tx_power", 0, {-40, 8.16}, 40},
    {"rx_power", 0, {-40, 8.16}, 40},
}};

constexpr std::string_view drift_keys[] = {"drift", "period"};

int32_t to_unit(const quantity_key &key, double value) {
    constexpr double units_in_mw = 10000;
    return static_cast<int32_t>(
        std::lround(key.scale == 0 ? units_in_mw * std::pow(10, value / 10) : key.scale * value));
}

void read_drift(const quantity_key &key, const section &from, drift &to) {
    constexpr double longest_period = 86400;
    if (const auto *period = from.find("period"))
        to.period = read_decimal(*period, from.path("period"), {1, longest_period});
    const auto *amplitude = from.find("drift");
    if (amplitude == nullptr) return;
    const double scale = key.scale == 0 ? 1 : key.scale;
    to.amplitude = scale * read_decimal(*amplitude, from.path("drift"), {0, key.most_drift});
    if (to.amplitude > 0 && to.period == 0) from.fail("period", "is missing");
}

void read_reading(const quantity_key &key, const section &from, sff8472::reading &to) {
    constexpr int32_t sff8472::reading::*members[] = {&sff8472::reading::value, &sff8472::reading::high_alarm,
                                                      &sff8472::reading::high_warning, &sff8472::reading::low_warning,
                                                      &sff8472::reading::low_alarm};
    for (size_t i = 0; i < std::size(members); ++i) {
        const auto *value = from.find(reading_keys.at(i));
        if (value != nullptr)
            to.*members[i] = to_unit(key, read_decimal(*value, from.path(reading_keys.at(i)), key.range));
    }
    const bool is_in_order =
        to.low_alarm <= to.low_warning && to.low_warning <= to.high_warning && to.high_warning <= to.high_alarm;
    if (!is_in_order)
        from.fail("high_alarm", "the thresholds are not in order: high_alarm, high_warning, low_warning, low_alarm");
}

// Reads the tables of the quantities that a section has.
void for_each_quantity(const section &from, std::span<const std::string_view> keys, auto read) {
    for (size_t i = 0; i < quantity_key_table.size(); ++i) {
        const quantity_key &key = quantity_key_table.at(i);
        if (const auto *table = from.find(key.name)) read(i, key, section(from.path(key.name), *table, {}, keys));
    }
}

constexpr auto all_keys = [] {
    std::array<std::string_view, page_key_table.size() + quantity_key_table.size()> all;
    const auto name = [](const auto &key) { return key.name; };
    auto *const quantities = std::transform(page_key_table.begin(), page_key_table.end(), all.begin(), name);
    std::transform(quantity_key_table.begin(), quantity_key_table.end(), quantities, name);
    return all;
}();

}  // namespace

std::span<const std::string_view> page_keys() { return std::span(all_keys).first(page_key_table.size()); }

std::span<const std::string_view> quantity_keys() { return std::span(all_keys).last(quantity_key_table.size()); }

std::span<const std::string_view> transceiver_keys() { return all_keys; }

void apply_page_keys(const section &from, transceiver_plan &to) {
    for (const page_key &key : page_key_table) {
        if (const auto *value = from.find(key.name)) key.apply(*value, from.path(key.name), to);
    }
}

void apply_quantity_keys(const section &from, transceiver_plan &to) {
    for_each_quantity(from, reading_keys, [&](size_t i, const quantity_key &key, const section &table) {
        if (to.calibrated == calibration::none) from.fail(key.name, "a transceiver without diagnostics reads nothing");
        read_reading(key, table, to.readings[i]);
        read_drift(key, table, to.drifts[i]);
    });
}

void apply_drift_keys(const section &from, transceiver &to) {
    for_each_quantity(from, drift_keys, [&](size_t i, const quantity_key &key, const section &table) {
        if (!to.has_diagnostics) from.fail(key.name, "a transceiver without diagnostics reads nothing");
        read_drift(key, table, to.drifts[i]);
    });
}

}  // namespace virtual_switch
