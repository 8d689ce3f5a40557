// SPDX-License-Identifier: Apache-2.0
#include "platform/idxmap.h"

#include <cerrno>

#include "chassis_db/chassis_reader.h"
#include "platform/if_index.h"

namespace {

constexpr size_t slot_offset = 8;
constexpr size_t port_base_offset = 9;

// The map holds main interfaces; a sub-interface lives where its main interface does.
std::optional<platform_dev::index_map_entry> find_owner(if_index_t index) {
    return platform_dev::find_index_map_entry(if_index_get_mainintf_from_subintf(index));
}

}  // namespace

int32_t idxmap_node_by_if_index(if_index_t index, uint32_t *node) {
    const auto owner = find_owner(index);
    if (!owner) return ENOENT;
    *node = owner->node;
    return 0;
}

int32_t idxmap_entry_by_if_index(if_index_t index, idxmap_entry_t *entry) {
    const auto owner = find_owner(index);
    if (!owner) return ENOENT;
    *entry = {};
    entry->byte[slot_offset] = owner->slot;
    entry->byte[port_base_offset] = owner->port_base;
    return 0;
}
