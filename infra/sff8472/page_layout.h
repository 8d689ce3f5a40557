// SPDX-License-Identifier: Apache-2.0
// page_layout.h: what lies where in the two pages of a transceiver. Numbers are big-endian, texts padded with blanks.
#ifndef SFF8472_PAGE_LAYOUT_H
#define SFF8472_PAGE_LAYOUT_H

#include <array>
#include <cstddef>
#include <cstdint>

namespace sff8472 {

// Bytes of a run, from its offset.
struct field {
    size_t offset;
    size_t size;
};

// The serial-id page, A0h.
namespace serial_id {
inline constexpr size_t page_size = 128;
inline constexpr size_t identifier = 0;
inline constexpr size_t extended_identifier = 1;  // 4: what it is stands in the page
inline constexpr size_t connector = 2;
inline constexpr size_t ethernet_10g_codes = 3;
inline constexpr size_t ethernet_codes = 6;
inline constexpr size_t fc_length_and_technology = 7;
inline constexpr size_t fc_technology_and_cable = 8;
inline constexpr size_t fc_media = 9;
inline constexpr size_t fc_speed = 10;
inline constexpr size_t encoding = 11;
inline constexpr size_t bit_rate = 12;  // units of 100 MBd; 0xff: see bit_rate_max
inline constexpr size_t length_single_mode_km = 14;
inline constexpr size_t length_single_mode = 15;  // units of 100 m
inline constexpr size_t length_om2 = 16;          // units of 10 m
inline constexpr size_t length_om1 = 17;          // units of 10 m
inline constexpr size_t length_copper = 18;       // m, also of any cable; of a fibre transceiver units of 10 m of OM4
inline constexpr size_t length_om3 = 19;          // units of 10 m
inline constexpr field vendor_name{20, 16};
inline constexpr field vendor_oui{37, 3};
inline constexpr field part_number{40, 16};
inline constexpr field revision{56, 4};
inline constexpr size_t wavelength = 60;           // nm, 16 bits; of a cable its compliance
inline constexpr size_t wavelength_fraction = 62;  // 0.01 nm, of a DWDM-SFP
inline constexpr size_t base_checksum = 63;        // low byte of the sum of bytes 0 to 62
inline constexpr size_t options = 64;              // 16 bits
inline constexpr size_t bit_rate_max = 66;         // percent above bit_rate; units of 250 MBd when that is 0xff
inline constexpr field serial_number{68, 16};
inline constexpr field date_code{84, 8};  // year, month and day in two digits each, and a lot
inline constexpr size_t diagnostic_type = 92;
inline constexpr size_t compliance = 94;
inline constexpr size_t extended_checksum = 95;  // low byte of the sum of bytes 64 to 94
}  // namespace serial_id

// Bits of serial_id::fc_technology_and_cable: the transceiver is one end of a cable.
namespace cable {
inline constexpr uint8_t passive = 0x04;
inline constexpr uint8_t active = 0x08;
}  // namespace cable

// Bits of serial_id::diagnostic_type.
namespace diagnostic_type {
inline constexpr uint8_t implemented = 0x40;
inline constexpr uint8_t internally_calibrated = 0x20;
inline constexpr uint8_t externally_calibrated = 0x10;
inline constexpr uint8_t average_rx_power = 0x08;  // else the optical modulation amplitude
}  // namespace diagnostic_type

// The diagnostic page, A2h, as far as the readings.
namespace diagnostic {
inline constexpr size_t page_size = 109;
inline constexpr size_t thresholds = 0;            // of each quantity: high alarm, low alarm, high warning, low warning
inline constexpr size_t rx_power_polynomial = 56;  // five floats, the coefficient of the highest power first
// Where slope and offset lie: of temperature, voltage, bias and transmit power.
inline constexpr std::array<size_t, 4> calibration{84, 88, 76, 80};
inline constexpr size_t checksum = 95;  // low byte of the sum of bytes 0 to 94
inline constexpr size_t readings = 96;  // temperature, voltage, bias, transmit power, receive power
}  // namespace diagnostic

}  // namespace sff8472

#endif
