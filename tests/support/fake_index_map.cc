// SPDX-License-Identifier: Apache-2.0
#include "fake_index_map.h"

#include <fmt/format.h>

#include <cstring>

#include "call_log.h"
#include "platform/idxmap.h"

namespace support {
namespace {

fake_index_map *active = nullptr;
constexpr int rubbish = 0xee;

fake_index_map::look next_look() {
    if (active->entry_looks.empty()) return active->entry;
    const fake_index_map::look look = active->entry_looks.front();
    active->entry_looks.pop_front();
    return look;
}

}  // namespace

fake_index_map::fake_index_map() { active = this; }

fake_index_map::~fake_index_map() { active = nullptr; }

}  // namespace support

int32_t idxmap_node_by_if_index(if_index_t if_index, uint32_t *node) {
    support::call_log::add(fmt::format("idxmap_node_by_if_index({:#010x})", if_index));
    *node = support::active->node;
    return support::active->node_result;
}

int32_t idxmap_entry_by_if_index(if_index_t if_index, idxmap_entry_t *entry) {
    support::call_log::add(fmt::format("idxmap_entry_by_if_index({:#010x})", if_index));
    const support::fake_index_map::look look = support::next_look();
    std::memset(entry, support::rubbish, sizeof *entry);
    entry->byte[8] = look.slot;
    entry->byte[9] = look.port_base;
    return look.result;
}
