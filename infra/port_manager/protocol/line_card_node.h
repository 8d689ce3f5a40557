// SPDX-License-Identifier: Apache-2.0
// line_card_node.h: where line cards answer.
#ifndef PROTOCOL_LINE_CARD_NODE_H
#define PROTOCOL_LINE_CARD_NODE_H

#include <cstdint>

namespace pm {

// The address of the line card in `slot`, counted from 0.
constexpr uint32_t line_card_node(uint8_t slot) { return ((slot + 1u) << 8 | 2u) & 0xff02u; }

}  // namespace pm

#endif
