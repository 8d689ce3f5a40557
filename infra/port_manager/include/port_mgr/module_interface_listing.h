/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_module_interface_listing module_interface_listing.h: interfaces of a module
 * @ingroup port_mgr
 * @brief The interfaces of a module.
 * @{
 */
#ifndef PORT_MGR_MODULE_INTERFACE_LISTING_H
#define PORT_MGR_MODULE_INTERFACE_LISTING_H

#include "port_mgr/port_info_record.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * Asks for the records of a module's interfaces of one type, over CMI.
 *
 * @param[in]  handle    The caller's queue; it belongs to one thread at a time, apart from which the function is
 *                       thread-safe.
 * @param[in]  module    The module's number, counted from 1.
 * @param[in]  if_index  Any interface of the type asked for; the service that owns it answers. One without a type asks
 *                       the port manager for type 0, after a line on standard output.
 * @param[in]  last      The longest wait in seconds; 0 for the transport's own limit.
 * @param[out] count     The number of records; not null.
 * @param[out] records   The records, one block that the caller frees once, or null when there are none; not null.
 * @return The transport's status, with the outputs untouched, or what pm_parse_get_port_info_res_payload() makes of the
 *     answer.
 */
PM_API uint32_t pm_cmi_get_module_interface_listing(mts_handle_t handle, uint8_t module, if_index_t if_index,
                                                    uint32_t last, uint32_t *count, pm_port_info_t **records);

PM_END_DECLS

/** @} */
#endif
