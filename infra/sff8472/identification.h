// SPDX-License-Identifier: Apache-2.0
// identification.h: what a transceiver says about itself in its serial-id page (A0h).
#ifndef SFF8472_IDENTIFICATION_H
#define SFF8472_IDENTIFICATION_H

#include <array>
#include <span>
#include <string>
#include <vector>

#include "sff8472/page_layout.h"

namespace sff8472 {

using serial_id_page = std::span<const uint8_t, serial_id::page_size>;

// How far a transceiver reaches over a medium.
struct reach {
    const char *medium;  // "single-mode fibre", "OM3 fibre", "copper", "cable" ...
    uint32_t metres;
    bool is_more;  // farther than the page can count
};

struct identification {
    std::string identifier;  // the form: "SFP" ...; "unknown (0x2a)" for codes that have no name here
    std::string connector;
    std::string technology;  // "short wave laser", "long wave laser", "active cable" ... ; empty when it tells none
    std::string vendor;      // texts without the blanks that pad them
    std::array<uint8_t, 3> oui;
    std::string part_number;
    std::string revision;
    std::string serial_number;
    std::string date;          // "2024-05-17"; empty when the code is none
    std::string lot;           // the vendor's lot, behind the date
    uint32_t bit_rate;         // MBd; 0 when it tells none
    uint32_t wavelength;       // 0.01 nm; 0 for copper and for cables
    bool is_copper;            // of an active cable as far as the page tells
    bool has_diagnostics;      // there is a diagnostic page
    bool checksums_are_right;  // of both parts of the page
};

identification identify(serial_id_page page);

// The lengths that the page tells, longest medium first.
std::vector<reach> reaches_of(serial_id_page page);

}  // namespace sff8472

#endif
