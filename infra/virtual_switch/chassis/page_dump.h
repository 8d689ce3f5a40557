// SPDX-License-Identifier: Apache-2.0
// page_dump.h: the pages of a transceiver as "ethtool -m INTERFACE hex on" prints them.
#ifndef VIRTUAL_SWITCH_CHASSIS_PAGE_DUMP_H
#define VIRTUAL_SWITCH_CHASSIS_PAGE_DUMP_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "chassis/transceiver.h"

namespace virtual_switch {

// How many bytes each of the two pages has in a dump.
inline constexpr size_t dumped_page_size = 256;

// Reads lines of 16 bytes, "0x0010:  4f 50 ...", in order of offsets; headings, blank lines and lines that begin with #
// may stand between them. Returns the serial-id page, or that and the diagnostic page behind it. Throws chassis_error.
std::vector<uint8_t> parse_page_dump(std::string_view text);

// The transceiver that has these pages.
transceiver transceiver_of(const std::vector<uint8_t> &pages);

// The same from a file. Throws std::runtime_error with one line, "FILE:LINE: page dump: what is wrong".
std::vector<uint8_t> load_page_dump(const std::string &path);

}  // namespace virtual_switch

#endif
