// SPDX-License-Identifier: Apache-2.0
#include "sff8472/identification.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "sff8472/checksum.h"
#include "sff8472/code_names.h"

namespace sff8472 {
namespace {

// A length byte, and the metres that it counts.
struct length_byte {
    size_t offset;
    uint32_t unit;
    const char *medium;
};

constexpr uint8_t beyond = 0xff;  // of a length byte: more than 254

constexpr length_byte single_mode_fine{serial_id::length_single_mode, 100, "single-mode fibre"};
constexpr length_byte single_mode_coarse{serial_id::length_single_mode_km, 1000, "single-mode fibre"};
constexpr length_byte multi_mode_lengths[] = {
    {serial_id::length_copper, 10, "OM4 fibre"},
    {serial_id::length_om3, 10, "OM3 fibre"},
    {serial_id::length_om2, 10, "OM2 fibre"},
    {serial_id::length_om1, 10, "OM1 fibre"},
};

std::string name_of(uint8_t code, std::span<const code_name> names) {
    for (const code_name &known : names) {
        if (known.code == code) return std::string(known.name);
    }
    char text[sizeof "unknown (0x00)"];
    std::snprintf(text, sizeof text, "unknown (0x%02x)", code);
    return text;
}

std::string text_of(serial_id_page page, field of) {
    const std::string_view text(reinterpret_cast<const char *>(&page[of.offset]), of.size);
    const size_t end = text.find_last_not_of(std::string_view(" \0", 2));
    return std::string(text.substr(0, end == std::string_view::npos ? 0 : end + 1));
}

// "240517" and a lot become "2024-05-17" and the lot.
void take_date(const std::string &code, identification &to) {
    constexpr size_t digits = 6;
    if (code.size() < digits || code.find_first_not_of("0123456789") < digits) return;
    to.date = "20" + code.substr(0, 2) + "-" + code.substr(2, 2) + "-" + code.substr(4, 2);
    to.lot = code.substr(digits);
}

const technology_bit *technology_of(serial_id_page page) {
    for (const technology_bit &known : technologies) {
        if ((page[known.offset] & known.bit) != 0) return &known;
    }
    return nullptr;
}

bool is_cable(serial_id_page page) {
    return (page[serial_id::fc_technology_and_cable] & (cable::passive | cable::active)) != 0;
}

// The plug of an active cable tells which it is.
bool is_copper(serial_id_page page) {
    const technology_bit *const known = technology_of(page);
    if (known == nullptr) return false;
    const bool is_either = known->over == medium::either;
    return is_either ? page[serial_id::connector] == copper_pigtail : known->over == medium::copper;
}

uint32_t bit_rate_of(serial_id_page page) {
    constexpr uint8_t see_maximum = 0xff;
    const uint8_t nominal = page[serial_id::bit_rate];
    return nominal == see_maximum ? page[serial_id::bit_rate_max] * 250u : nominal * 100u;
}

uint32_t wavelength_of(serial_id_page page) {
    const uint32_t nanometres = page[serial_id::wavelength] * 256u + page[serial_id::wavelength + 1];
    const bool has_fraction = page[serial_id::identifier] == dwdm_sfp;
    return nanometres * 100 + (has_fraction ? page[serial_id::wavelength_fraction] : 0u);
}

// The finer byte, unless only the coarse one tells how far.
const length_byte &single_mode_length(serial_id_page page) {
    const uint8_t fine = page[single_mode_fine.offset];
    const bool is_told = fine != 0 && fine != beyond;
    return is_told || page[single_mode_coarse.offset] == 0 ? single_mode_fine : single_mode_coarse;
}

bool is_sum(serial_id_page page, size_t first, size_t check) {
    return checksum(page.subspan(first, check - first)) == page[check];
}

}  // namespace

identification identify(serial_id_page page) {
    identification found{};
    const technology_bit *const technology = technology_of(page);
    found.identifier = name_of(page[serial_id::identifier], identifiers);
    found.connector = name_of(page[serial_id::connector], connectors);
    found.technology = technology != nullptr ? technology->name : std::string_view();
    found.is_copper = is_copper(page);
    found.vendor = text_of(page, serial_id::vendor_name);
    std::copy_n(&page[serial_id::vendor_oui.offset], found.oui.size(), found.oui.begin());
    found.part_number = text_of(page, serial_id::part_number);
    found.revision = text_of(page, serial_id::revision);
    found.serial_number = text_of(page, serial_id::serial_number);
    take_date(text_of(page, serial_id::date_code), found);
    found.bit_rate = bit_rate_of(page);
    found.wavelength = found.is_copper || is_cable(page) ? 0 : wavelength_of(page);
    found.has_diagnostics = (page[serial_id::diagnostic_type] & diagnostic_type::implemented) != 0;
    found.checksums_are_right =
        is_sum(page, 0, serial_id::base_checksum) && is_sum(page, serial_id::options, serial_id::extended_checksum);
    return found;
}

std::vector<reach> reaches_of(serial_id_page page) {
    std::vector<reach> reaches;
    const auto add = [&](const length_byte &length) {
        const uint8_t count = page[length.offset];
        if (count == 0) return;
        const bool is_more = count == beyond;
        reaches.push_back({length.medium, (is_more ? beyond - 1 : count) * length.unit, is_more});
    };
    if (is_copper(page) || is_cable(page)) {
        add({serial_id::length_copper, 1, is_copper(page) ? "copper" : "cable"});
        return reaches;
    }
    add(single_mode_length(page));
    for (const length_byte &length : multi_mode_lengths) add(length);
    return reaches;
}

}  // namespace sff8472
