/* SPDX-License-Identifier: Apache-2.0 */
/* service_selection.h: which service owns an interface, and what kind of port channel it is. All functions are
 * thread-safe; a record that is handed over belongs to one thread at a time. */
#ifndef PORT_MGR_SERVICE_SELECTION_H
#define PORT_MGR_SERVICE_SELECTION_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* The SAP of the service that owns the interface. An index without a type belongs to the port manager
 * (PM_SAP_PORT_MANAGER), after a line on standard output. Never fails. A port channel costs a look-up of its
 * members, which is made anew each time. */
PM_API uint32_t pm_get_mts_sap(if_index_t if_index);

/* 1 when the interface is an Ethernet port channel or a sub-interface of a port channel, else 0. */
PM_API int32_t pm_is_ether_channel(if_index_t if_index);

/* The kind of a port channel: 2 for Ethernet (or a sub-interface of a port channel), 1 for Fibre Channel, for a
 * channel without members, and when the members cannot be learnt. */
PM_API uint32_t pm_port_channel_type(if_index_t if_index);

/* Looks up the members of a port channel in the platform's databases.
 *
 * chassis_type  10 and 11 choose the port-channel database, whose libraries are loaded for the call; every other
 *               type the port-channel map
 * channel       the channel
 * record        in and out: storage of the caller's for the platform's member record, at least 144 bytes for chassis
 *               types 10 and 11, else 172. Host order: database record: channel at offset 6, number of members at
 *               18, first member at 26; map record: 0, 8 and 32
 *
 * Returns 0, or -1 on any failure; a library or symbol that is missing is named on standard output. */
PM_API int32_t get_port_channel_members(uint32_t chassis_type, if_index_t channel, void *record);

/* Asks the port-channel database, on every chassis type, with both arguments unchanged: pcm_get_pc_for_port.
 * Returns 0, or -1 on any failure. A library that is missing is named on standard output; a missing symbol there is
 * reported under the name pcm_get_pc_info. */
PM_API int32_t get_port_channel_info(uint32_t first, uint32_t second);

PM_END_DECLS

#endif
