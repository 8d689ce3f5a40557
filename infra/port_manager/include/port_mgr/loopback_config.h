/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_loopback_config loopback_config.h: loopback interfaces
 * @ingroup port_mgr
 * @brief Creates and deletes loopback interfaces.
 * @{
 */
#ifndef PORT_MGR_LOOPBACK_CONFIG_H
#define PORT_MGR_LOOPBACK_CONFIG_H

#include "port_mgr/sub_interface_config.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** Kinds of interfaces in a mask, low half: loopback interfaces. */
#define PM_IF_KIND_LOOPBACK 0x4000u

/** @name What a request asks for: its CMI request kind
 * @{ */
#define PM_LOOPBACK_CREATE 3u /**< create the interfaces; those that exist stay as they are */
#define PM_LOOPBACK_DELETE 4u /**< delete the interfaces */
/** @} */

/**
 * Creates or deletes loopback interfaces, and waits for the answer, in which nothing is looked at.
 *
 * @param[in] handle     The caller's queue; it belongs to one thread at a time, apart from which the function is
 *                       thread-safe.
 * @param[in] flag       Nonzero to create, 0 to delete.
 * @param[in] mask_low   The kinds of interfaces in the ranges: must have PM_IF_KIND_LOOPBACK.
 * @param[in] mask_high  The upper half of the mask; only printed.
 * @param[in] ranges     The interfaces, not looked at before they are sent; not null.
 * @param[in] last       The longest wait in seconds; 0 for the transport's own limit.
 * @return 0; the status of the transport, which is where a service's refusal is told; PM_ERR_FAILURE for null ranges;
 *     PM_ERR_REJECTED for a mask without the kind, after a line on standard output; or 1 when memory ran out, after
 *     another.
 */
PM_API uint32_t pm_cli_config_loopback_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low,
                                                 uint32_t mask_high, const pm_if_range_list_t *ranges, uint32_t last);

PM_END_DECLS

/** @} */
#endif
