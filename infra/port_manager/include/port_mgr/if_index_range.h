/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_if_index_range if_index_range.h: ranges of interfaces
 * @ingroup port_mgr
 * @brief Ranges of interfaces as people name them, counted and stepped through.
 *
 * A range runs from its first to its last interface, both included, of one interface type. Nothing is sent: the
 * platform's interface indexes and its chassis record are all that is asked. The number of module slots is asked for
 * once in the life of the process; while the platform cannot tell it, every call asks again and assumes 9. Both
 * functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_IF_INDEX_RANGE_H
#define PORT_MGR_IF_INDEX_RANGE_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * Checks a range and counts its members.
 *
 *     type        members                      the range must
 *     1, 11, 13   the ports                    lie on one slot of the chassis,
 *                                              not backwards
 *     2           the ports, or the sub-       the same, and the
 *                 interfaces of a single port  sub-interfaces not backwards
 *     4, 22       the port channels            not run backwards
 *     5           1, whatever the ends are
 *     10          the tunnels; backwards the count wraps around
 *
 * A channel whose number cannot be told counts as channel 0.
 *
 * @param[in]  first  The first interface, host order.
 * @param[in]  last   The last interface, host order.
 * @param[out] count  The number of members, 0 on failure; not null.
 * @return 0, a failure of if_index_get_type() as it stands, or PM_ERR_INVALID_RANGE: two types, another type than those
 *     above, an end whose slot, port, sub-interface or tunnel cannot be told, or a range that is not as it must be.
 */
PM_API uint32_t pm_get_num_ports_in_if_index_range(if_index_t first, if_index_t last, uint32_t *count);

/**
 * Gives the member at an offset.
 *
 * Members are main interfaces: ports are stepped through even where a range of sub-interfaces was counted.
 *
 *     type    the member                        built as
 *     1       port (first + offset) modulo 256  physical Fibre Channel port
 *             of the slot
 *     2, 13   the same                          physical Ethernet port
 *     4, 22   channel first + offset            port channel
 *     10      tunnel first + offset             FCIP interface
 *
 * A channel or tunnel whose number cannot be told counts as number 0.
 *
 * @param[in]  first   The first interface, host order.
 * @param[in]  last    The last interface, host order.
 * @param[out] member  The member's index, host order; written on success only; not null.
 * @param[in]  offset  Counted from 0. When it is 0 and both ends are the same, `first` is the member, unchecked and
 *                     whatever it is.
 * @return 0, a failure of if_index_get_type() as it stands, PM_ERR_REJECTED when the port is above the last one, or
 *     PM_ERR_INVALID_RANGE: two types, another type than those above, an end whose slot or port cannot be told, a range
 *     that is not as pm_get_num_ports_in_if_index_range() wants it or, of tunnels too, runs backwards, and a channel or
 *     tunnel above the last one.
 */
PM_API uint32_t pm_get_if_index_in_range(if_index_t first, if_index_t last, if_index_t *member, uint32_t offset);

PM_END_DECLS

/** @} */
#endif
