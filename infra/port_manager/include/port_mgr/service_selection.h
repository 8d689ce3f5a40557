/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_service_selection service_selection.h: owners and port channels
 * @ingroup port_mgr
 * @brief Which service owns an interface, and what kind of port channel it is.
 *
 * All functions are thread-safe; a record that is handed over belongs to one thread at a time.
 * @{
 */
#ifndef PORT_MGR_SERVICE_SELECTION_H
#define PORT_MGR_SERVICE_SELECTION_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * Tells which service owns an interface.
 *
 * A port channel costs a look-up of its members, which is made anew each time.
 *
 * @param[in] if_index  The interface. One without a type belongs to the port manager, after a line on standard output.
 * @return The SAP of the service, one of PM_SAP_...; never fails.
 */
PM_API uint32_t pm_get_mts_sap(if_index_t if_index);

/**
 * Tells whether an interface is an Ethernet port channel or a sub-interface of a port channel.
 *
 * @param[in] if_index  The interface.
 * @return 1 when it is, else 0.
 */
PM_API int32_t pm_is_ether_channel(if_index_t if_index);

/**
 * Tells the kind of a port channel.
 *
 * @param[in] if_index  The channel, or a sub-interface of one.
 * @return 2 for Ethernet (or a sub-interface of a port channel), 1 for Fibre Channel, for a channel without members,
 *     and when the members cannot be learnt.
 */
PM_API uint32_t pm_port_channel_type(if_index_t if_index);

/**
 * Looks up the members of a port channel in the platform's databases.
 *
 * Words of the record are in host order: of a database record, the channel is at offset 6, the number of members at 18
 * and the first member at 26; of a map record, at 0, 8 and 32.
 *
 * @param[in]     chassis_type  10 and 11 choose the port-channel database, whose libraries are loaded for the call;
 *                              every other type the port-channel map.
 * @param[in]     channel       The channel.
 * @param[in,out] record        Storage of the caller's for the platform's member record, at least 144 bytes for chassis
 *                              types 10 and 11, else 172.
 * @return 0, or -1 on any failure; a library or symbol that is missing is named on standard output.
 */
PM_API int32_t get_port_channel_members(uint32_t chassis_type, if_index_t channel, void *record);

/**
 * Asks the port-channel database, on every chassis type: pcm_get_pc_for_port() with both arguments unchanged.
 *
 * @param[in] first   A port.
 * @param[in] second  A channel, which the port may be a member of.
 * @return 0, or -1 on any failure. A library that is missing is named on standard output; a missing symbol there is
 *     reported under the name pcm_get_pc_info.
 */
PM_API int32_t get_port_channel_info(uint32_t first, uint32_t second);

PM_END_DECLS

/** @} */
#endif
