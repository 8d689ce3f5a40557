/* SPDX-License-Identifier: Apache-2.0 */
/* port_capabilities.h: what a kind of interface supports.
 *
 * The predicates return exactly 0 or 1. Those that take an interface ask the platform for its type, and none else of
 * its surroundings. All are thread-safe. */
#ifndef PORT_MGR_PORT_CAPABILITIES_H
#define PORT_MGR_PORT_CAPABILITIES_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* What an SNMP agent answers for a status of the library: the status itself. */
PM_API uint32_t pm_map_snmp_error_code(uint32_t status);

/* Whether the interface is the port channel of subtype 1. 0 for an index whose type or subtype cannot be told. */
PM_API int32_t pm_is_xgfc_interface(if_index_t if_index);

/* Whether the interface is a port channel (type 4 or 22), but not one of subtype 1. 0 for an index whose type cannot
 * be told. */
PM_API int32_t pm_is_bundle_port_type(if_index_t if_index);

/* Whether interfaces of a type can be given a port mode: not 2, 5 and 11. */
PM_API int32_t pm_is_port_mode_supported(uint8_t type);

/* Whether interfaces of a type can be given a trunking mode: not 2, 5 and 11. */
PM_API int32_t pm_is_trunk_mode_supported(uint8_t type);

/* Whether interfaces of a type can be given a speed: not 2 and 11. */
PM_API int32_t pm_is_port_speed_supported(uint8_t type);

/* Whether interfaces of a type can be given a duplex mode: 5 only. */
PM_API int32_t pm_is_duplex_mode_supported(uint8_t type);

/* Whether the interface has a beacon: not the types 5, 10 and 11, and of type 4 the port channel of subtype 1 only. An
 * index whose type cannot be told counts as type 0: 1. */
PM_API int32_t pm_is_beacon_mode_supported(if_index_t if_index);

/* Whether the interface has buffer-to-buffer credits: not the types 5, 10, 11 and 254, and of type 4 the port channel
 * of subtype 1 only. An index whose type cannot be told counts as type 0: 1. */
PM_API int32_t pm_is_bbcredit_supported(if_index_t if_index);

PM_END_DECLS

#endif
