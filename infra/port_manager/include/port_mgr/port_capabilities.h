/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_capabilities port_capabilities.h: what interfaces support
 * @ingroup port_mgr
 * @brief What a kind of interface supports.
 *
 * The predicates return exactly 0 or 1. Those that take an interface ask the platform for its type and, of a port
 * channel, its subtype. Those that take a code leave its meaning to their caller; with interface types as codes they
 * answer for interfaces of that type. All are thread-safe.
 * @{
 */
#ifndef PORT_MGR_PORT_CAPABILITIES_H
#define PORT_MGR_PORT_CAPABILITIES_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * What an SNMP agent answers for a status of the library.
 *
 * @param[in] status  The status.
 * @return The status itself.
 */
PM_API uint32_t pm_map_snmp_error_code(uint32_t status);

/**
 * Tells whether an interface is a port channel of type 4 and subtype 1.
 *
 * @param[in] if_index  The interface.
 * @return 1 when it is; 0 also for an index whose type or subtype cannot be told.
 */
PM_API int32_t pm_is_xgfc_interface(if_index_t if_index);

/**
 * Tells whether an interface is a bundle of ports: a port channel of type 22, or one of type 4 that
 * pm_is_xgfc_interface() denies.
 *
 * @param[in] if_index  The interface.
 * @return 1 when it is; 0 also for an index whose type cannot be told.
 */
PM_API int32_t pm_is_bundle_port_type(if_index_t if_index);

/**
 * Tells whether there is a port mode to set.
 *
 * @param[in] code  The kind of interface.
 * @return 0 for the codes 2, 5 and 11, else 1.
 */
PM_API int32_t pm_is_port_mode_supported(uint8_t code);

/**
 * Tells whether there is a trunking mode to set.
 *
 * @param[in] code  The kind of interface.
 * @return 0 for the codes 2, 5 and 11, else 1.
 */
PM_API int32_t pm_is_trunk_mode_supported(uint8_t code);

/**
 * Tells whether there is a speed to set.
 *
 * @param[in] code  The kind of interface.
 * @return 0 for the codes 2 and 11, else 1.
 */
PM_API int32_t pm_is_port_speed_supported(uint8_t code);

/**
 * Tells whether there is a duplex mode to set.
 *
 * @param[in] code  The kind of interface.
 * @return 1 for the code 5, else 0.
 */
PM_API int32_t pm_is_duplex_mode_supported(uint8_t code);

/**
 * Tells whether an interface has a beacon.
 *
 * @param[in] if_index  The interface. An index whose type cannot be told counts as type 0.
 * @return 0 for the types 5, 10 and 11, and of type 4 for those that pm_is_xgfc_interface() affirms; else 1.
 */
PM_API int32_t pm_is_beacon_mode_supported(if_index_t if_index);

/**
 * Tells whether an interface has buffer-to-buffer credits.
 *
 * @param[in] if_index  The interface. An index whose type cannot be told counts as type 0.
 * @return 0 for the types 5, 10, 11 and 254, and of type 4 for those that pm_is_xgfc_interface() affirms; else 1.
 */
PM_API int32_t pm_is_bbcredit_supported(if_index_t if_index);

PM_END_DECLS

/** @} */
#endif
