// SPDX-License-Identifier: Apache-2.0
// sfp_diagnostics_layout.h: how a line card's answer about a transceiver travels, mts_get_sfp_diag_info_t.
#ifndef PROTOCOL_SFP_DIAGNOSTICS_LAYOUT_H
#define PROTOCOL_SFP_DIAGNOSTICS_LAYOUT_H

#include <cstddef>

#include "port_mgr/sfp_diagnostics.h"

namespace pm {

// A request: one interface index, as a plain number.
inline constexpr size_t sfp_request_size = 4;

// An answer: one element, its type and length in 16 bits each, whose value is the record word by word; and, when it is
// longer, an aligned array of elements.
inline constexpr uint16_t sfp_element_type = 27;
inline constexpr size_t sfp_element_header_size = 4;
inline constexpr size_t sfp_words = sizeof(pm_sfp_diag_info_t) / sizeof(uint32_t);
inline constexpr size_t sfp_answer_size = sfp_element_header_size + sizeof(pm_sfp_diag_info_t);

// Elements of the array: one that says nothing to the library, and pm_sfp_diag_extra_t.
inline constexpr uint16_t sfp_ignored_element = 79;
inline constexpr uint16_t sfp_extra_element = 80;

}  // namespace pm

#endif
