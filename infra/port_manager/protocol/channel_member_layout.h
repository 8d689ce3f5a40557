// SPDX-License-Identifier: Apache-2.0
// channel_member_layout.h: the query for a member of a port channel.
#ifndef PROTOCOL_CHANNEL_MEMBER_LAYOUT_H
#define PROTOCOL_CHANNEL_MEMBER_LAYOUT_H

#include <cstddef>
#include <cstdint>

namespace pm {

// The length that the query announces: the service's whole record, whose first word is the channel's index. The
// answer's first word is the member's.
inline constexpr size_t channel_member_query_size = 528;
inline constexpr uint32_t channel_member_query_kind = 2;
inline constexpr uint32_t channel_member_query_wait = 5;

// The index that stands for no channel in particular; it travels as 0.
inline constexpr uint32_t any_channel = 0x84ffffff;

}  // namespace pm

#endif
