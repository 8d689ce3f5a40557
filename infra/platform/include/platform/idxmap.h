/* SPDX-License-Identifier: Apache-2.0 */
/* idxmap.h: the index map, in libsdwrap: where an interface lives. */
#ifndef PLATFORM_IDXMAP_H
#define PLATFORM_IDXMAP_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/* One entry of the map. Byte 8 is the slot, byte 9 the port base of the interface's card. */
typedef struct idxmap_entry {
    uint8_t byte[64];
} idxmap_entry_t;

/* The address of the node that owns the interface. Returns 0 on success, else a status. */
int32_t idxmap_node_by_if_index(if_index_t, uint32_t *node);

/* The interface's entry. Returns 0 on success, else a status. */
int32_t idxmap_entry_by_if_index(if_index_t, idxmap_entry_t *entry);

PLATFORM_END_DECLS

#endif
