/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_dev_if_index if_index_dev.h: names and builders of indexes
 * @ingroup platform_dev
 * @brief Interface indexes beyond what the switch's own header offers: names to indexes, and builders for every kind.
 *
 * In libutils. All functions are pure and thread-safe.
 *
 * Layout of an index, from the most significant bit: 8 bits type; then, by type,
 *
 *     slot/port kinds   5 bits slot, 7 bits port, 12 bits sub-interface
 *                       (0: the main interface; always 0 in the types 1,
 *                       11 and 13, which have no sub-interfaces)
 *     port channels     2 bits subtype, 10 bits channel, 12 bits sub-interface
 *     FCIP              8 bits 0, 16 bits tunnel
 *     others            24 bits number
 *
 * Names: the kind's word, then `[unit/]number[.sub-interface]`. The unit is the slot, or the subtype of a port channel
 * when it is not 0 (`port-channel1/12`); slots and ports count from 1, everything else as in the index. A kind without
 * a word is called `if<type>-` (`if26-1/4`, `if254-7`). An index of an unknown type, or with a bit set outside its
 * layout, is called `if<type>-0x<its other 24 bits>` (`if99-0x3039`), so every index has a name.
 * @{
 */
#ifndef PLATFORM_DEV_IF_INDEX_DEV_H
#define PLATFORM_DEV_IF_INDEX_DEV_H

#include "platform/if_index.h"

PLATFORM_BEGIN_DECLS

/**
 * Builds the index of any slot/port kind.
 *
 * @param[out] out   The index.
 * @param[in]  type  The interface type.
 * @param[in]  slot  The slot, counted from 0.
 * @param[in]  port  The port, counted from 0.
 * @return 0, or -1 when the type is of another kind or a number does not fit.
 */
int32_t if_index_slot_port_init(if_index_t *out, uint8_t type, uint8_t slot, uint8_t port);

/**
 * Builds the index of an interface that has only a number: mgmt, FCIP, loopback, other.
 *
 * @param[out] out     The index.
 * @param[in]  type    The interface type.
 * @param[in]  number  The number.
 * @return 0, or -1 when the type is of another kind or the number does not fit.
 */
int32_t if_index_number_init(if_index_t *out, uint8_t type, uint32_t number);

/**
 * Builds the index of a sub-interface of an Ethernet-like main interface or a port channel.
 *
 * @param[out] out       The index.
 * @param[in]  main      The main interface.
 * @param[in]  sub_intf  The number, 1 to 4095.
 * @return 0, or -1 when the main interface is of another kind or the number does not fit.
 */
int32_t if_index_sub_intf_init(if_index_t *out, if_index_t main, uint16_t sub_intf);

/**
 * Builds the index of a port channel of either type with a subtype.
 *
 * @param[out] out      The index.
 * @param[in]  type     The interface type, 4 or 22.
 * @param[in]  subtype  The subtype, 0 to 3.
 * @param[in]  channel  The channel number.
 * @return 0, or -1 when the type is of another kind or a number does not fit.
 */
int32_t if_index_port_channel_subtype_init(if_index_t *out, uint8_t type, uint8_t subtype, uint16_t channel);

/**
 * Reads one display name as sprintf_if_index() writes it.
 *
 * Letters may be of either case, and a kind's word may be cut short to two letters or more (`eth2/7`, `po12`); "fc" is
 * always Fibre Channel.
 *
 * @param[in]  name  The name, NUL-terminated.
 * @param[out] out   The index.
 * @return 0, or -1 when it is no name.
 */
int32_t if_index_from_name(const char *name, if_index_t *out);

PLATFORM_END_DECLS

/** @} */
#endif
