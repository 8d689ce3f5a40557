// SPDX-License-Identifier: Apache-2.0
// transceiver_layout.h: how requests for transceivers, and their records, travel.
#ifndef PROTOCOL_TRANSCEIVER_LAYOUT_H
#define PROTOCOL_TRANSCEIVER_LAYOUT_H

#include <array>

#include "port_mgr/transceiver_info.h"
#include "protocol/record_codec.h"

namespace pm {

// A request: the number of ranges, the flavour, and the ranges.
inline constexpr size_t fcot_request_header_size = 8;
enum class fcot_flavour : uint32_t { plain = 1, with_diagnostics = 2 };

// In a message, the answer follows what the platform puts in front.
inline constexpr size_t fcot_message_header_size = 112;

// A record has the same offsets in memory as on the wire, and bytes that no table names travel as they are.
#define PM_FIELD(member, ...) \
    record_field { offsetof(pm_fcot_info_t, member), offsetof(pm_fcot_info_t, member), field_kind::__VA_ARGS__ }
inline constexpr auto fcot_fields = std::to_array({PM_FIELD(if_index, if_index), PM_FIELD(attributes, u32)});
inline constexpr auto fcot_fields_a = std::to_array({PM_FIELD(value_a, u32, 2)});
inline constexpr auto fcot_fields_b = std::to_array({PM_FIELD(value_b, u32, 2)});
#undef PM_FIELD

}  // namespace pm

#endif
