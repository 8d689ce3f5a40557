/* SPDX-License-Identifier: Apache-2.0 */
/* module_interface_listing.h: the interfaces of a module. */
#ifndef PORT_MGR_MODULE_INTERFACE_LISTING_H
#define PORT_MGR_MODULE_INTERFACE_LISTING_H

#include "port_mgr/port_info_record.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* Asks for the records of a module's interfaces of one type, over CMI.
 *
 * handle    the caller's queue; it belongs to one thread at a time, apart from which the function is thread-safe
 * module    the module's number, counted from 1
 * if_index  any interface of the type asked for; the service that owns it answers. One without a type asks the port
 *           manager for type 0, after a line on standard output
 * last      the longest wait in seconds; 0 for the transport's own limit
 * count     out, not null: the number of records
 * records   out, not null: the records, one block that the caller frees once; null when there are none
 *
 * Returns the transport's status, with the outputs untouched, or what pm_parse_get_port_info_res_payload makes of the
 * answer. */
PM_API uint32_t pm_cmi_get_module_interface_listing(mts_handle_t handle, uint8_t module, if_index_t if_index,
                                                    uint32_t last, uint32_t *count, pm_port_info_t **records);

PM_END_DECLS

#endif
