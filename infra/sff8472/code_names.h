// SPDX-License-Identifier: Apache-2.0
// code_names.h: what the codes of the serial-id page are called.
#ifndef SFF8472_CODE_NAMES_H
#define SFF8472_CODE_NAMES_H

#include <array>
#include <string_view>

#include "sff8472/page_layout.h"

namespace sff8472 {

struct code_name {
    uint8_t code;
    std::string_view name;
};

inline constexpr uint8_t dwdm_sfp = 0x0b;
inline constexpr uint8_t copper_pigtail = 0x21;

// Of serial_id::identifier.
inline constexpr std::array identifiers{
    code_name{0x01, "GBIC"}, code_name{0x02, "soldered"}, code_name{0x03, "SFP"}, code_name{0x05, "XENPAK"},
    code_name{0x06, "XFP"},  code_name{0x09, "XPAK"},     code_name{0x0a, "X2"},  code_name{dwdm_sfp, "DWDM-SFP"},
};

// Of serial_id::connector.
inline constexpr std::array connectors{
    code_name{0x01, "SC"},
    code_name{0x02, "FC copper style 1"},
    code_name{0x03, "FC copper style 2"},
    code_name{0x04, "BNC/TNC"},
    code_name{0x05, "FC coax"},
    code_name{0x06, "fiber jack"},
    code_name{0x07, "LC"},
    code_name{0x08, "MT-RJ"},
    code_name{0x09, "MU"},
    code_name{0x0a, "SG"},
    code_name{0x0b, "optical pigtail"},
    code_name{0x0c, "MPO"},
    code_name{0x20, "HSSDC II"},
    code_name{copper_pigtail, "copper pigtail"},
    code_name{0x22, "RJ45"},
    code_name{0x23, "no separable connector"},
};

// What a technology sends over. An active cable may be either.
enum class medium : uint8_t { fibre, copper, either };

// What a bit of the page says about the technology.
struct technology_bit {
    size_t offset;
    uint8_t bit;
    std::string_view name;
    medium over = medium::fibre;
};

// The first one that is set counts.
inline constexpr std::array technologies{
    technology_bit{serial_id::fc_technology_and_cable, cable::passive, "passive copper cable", medium::copper},
    technology_bit{serial_id::fc_technology_and_cable, cable::active, "active cable", medium::either},
    technology_bit{serial_id::ethernet_codes, 0x08, "1000BASE-T", medium::copper},
    technology_bit{serial_id::ethernet_codes, 0x04, "1000BASE-CX", medium::copper},
    technology_bit{serial_id::ethernet_10g_codes, 0x80, "10GBASE-ER"},
    technology_bit{serial_id::ethernet_10g_codes, 0x40, "10GBASE-LRM"},
    technology_bit{serial_id::ethernet_10g_codes, 0x20, "10GBASE-LR"},
    technology_bit{serial_id::ethernet_10g_codes, 0x10, "10GBASE-SR"},
    technology_bit{serial_id::fc_length_and_technology, 0x02, "long wave laser"},
    technology_bit{serial_id::fc_technology_and_cable, 0x10, "long wave laser"},
    technology_bit{serial_id::fc_length_and_technology, 0x04, "short wave laser"},
    technology_bit{serial_id::fc_technology_and_cable, 0x20, "short wave laser with OFC"},
    technology_bit{serial_id::fc_technology_and_cable, 0x40, "short wave laser"},
    technology_bit{serial_id::ethernet_codes, 0x02, "1000BASE-LX"},
    technology_bit{serial_id::ethernet_codes, 0x01, "1000BASE-SX"},
    technology_bit{serial_id::ethernet_codes, 0x20, "100BASE-FX"},
    technology_bit{serial_id::ethernet_codes, 0x10, "100BASE-LX10"},
    technology_bit{serial_id::ethernet_codes, 0x40, "BASE-BX10"},
    technology_bit{serial_id::ethernet_codes, 0x80, "BASE-PX"},
    technology_bit{serial_id::fc_length_and_technology, 0x01, "electrical inter-enclosure", medium::copper},
    technology_bit{serial_id::fc_technology_and_cable, 0x80, "electrical intra-enclosure", medium::copper},
};

}  // namespace sff8472

#endif
