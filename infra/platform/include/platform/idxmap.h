/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_idxmap idxmap.h: the index map
 * @ingroup platform
 * @brief Where an interface lives; in libsdwrap.
 *
 * Both functions take the interface first, of which a sub-interface lives where its main interface does. They are
 * thread-safe.
 * @{
 */
#ifndef PLATFORM_IDXMAP_H
#define PLATFORM_IDXMAP_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** One entry of the map. */
typedef struct idxmap_entry {
    uint8_t byte[64]; /**< byte 8 is the slot, byte 9 the port base of the interface's card */
} idxmap_entry_t;

/**
 * Looks up the address of the node that owns an interface.
 *
 * @param[out] node  The address.
 * @return 0 on success, else a status.
 */
int32_t idxmap_node_by_if_index(if_index_t, uint32_t *node);

/**
 * Looks up the entry of an interface.
 *
 * @param[out] entry  The entry.
 * @return 0 on success, else a status.
 */
int32_t idxmap_entry_by_if_index(if_index_t, idxmap_entry_t *entry);

PLATFORM_END_DECLS

/** @} */
#endif
