// SPDX-License-Identifier: Apache-2.0
#include "switch/silent_line_cards.h"

#include "platform/idxmap.h"

namespace pmctl {
namespace {

std::optional<uint32_t> node_of(if_index_t index) {
    uint32_t node = 0;
    if (idxmap_node_by_if_index(index, &node) != 0) return std::nullopt;
    return node;
}

}  // namespace

void silent_line_cards::note(if_index_t index) {
    if (const auto node = node_of(index)) questions_.emplace(*node, index);
}

std::optional<if_index_t> silent_line_cards::asked_in_vain(if_index_t index) const {
    if (questions_.empty()) return std::nullopt;
    const auto node = node_of(index);
    const auto found = node ? questions_.find(*node) : questions_.end();
    if (found == questions_.end()) return std::nullopt;
    return found->second;
}

}  // namespace pmctl
