/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_if_index if_index.h: interface indexes
 * @ingroup platform
 * @brief Arithmetic of interface indexes, in libutils.
 *
 * The getters take the index first, return 0 on success and leave their result untouched on failure, when they return
 * another number. The builders store the index of the interface named and return 0; a number that does not fit is a
 * failure and stores nothing. All functions are pure and thread-safe.
 * @{
 */
#ifndef PLATFORM_IF_INDEX_H
#define PLATFORM_IF_INDEX_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** Interface types. */
enum {
    IF_TYPE_NONE = 0,           /**< index 0: no interface, where a walk starts */
    IF_TYPE_FC = 1,             /**< physical Fibre Channel port */
    IF_TYPE_ETHERNET = 2,       /**< physical Ethernet port, and its sub-interfaces */
    IF_TYPE_PORT_CHANNEL = 4,   /**< port channel, and its sub-interfaces */
    IF_TYPE_MGMT = 5,           /**< single interface of its own service */
    IF_TYPE_FCIP = 10,          /**< FCIP tunnel */
    IF_TYPE_SLOT_PORT = 11,     /**< slot/port interface without sub-interfaces */
    IF_TYPE_ETHERNET_KIND = 13, /**< slot/port interface stepped like Ethernet */
    IF_TYPE_LOOPBACK = 20,      /**< numbered interface of the Ethernet service */
    IF_TYPE_BUNDLE = 22,        /**< second port-channel kind */
    IF_TYPE_ETHERNET_SFP = 26,  /**< interface of the Ethernet service with a transceiver */
    IF_TYPE_OTHER = 254         /**< numbered interface of another kind */
};

/**
 * Tells which kind of interface an index names.
 *
 * @param[out] type  The interface type. Index 0, where a walk starts, has type 0.
 * @return 0, or a failure for a type that the platform does not know.
 */
int32_t if_index_get_type(if_index_t, uint8_t *type);

/**
 * Tells the slot of a slot/port interface.
 *
 * @param[out] slot  The slot, counted from 0.
 * @return 0, or a failure for every other kind.
 */
int32_t if_index_get_slot(if_index_t, uint8_t *slot);

/**
 * Tells the port of a slot/port interface.
 *
 * @param[out] port  The port, counted from 0.
 * @return 0, or a failure for every other kind.
 */
int32_t if_index_get_port(if_index_t, uint8_t *port);

/**
 * Tells the sub-interface number.
 *
 * @param[out] sub_intf  The number, 0 for a main interface.
 * @return 0, or a failure for a kind without sub-interfaces: only the types 2, 4, 22 and 26 have them.
 */
int32_t if_index_get_sub_intf(if_index_t, uint16_t *sub_intf);

/**
 * Tells the main interface of a sub-interface.
 *
 * @return The index of the main interface; the index itself when it is one.
 */
if_index_t if_index_get_mainintf_from_subintf(if_index_t);

/**
 * Tells whether an index names a sub-interface of a port channel (type 4 or 22).
 *
 * @return 1 when it does, else 0.
 */
int32_t if_index_is_port_channel_sub_interface(if_index_t);

/**
 * Tells the sub-interface number of a physical Ethernet port.
 *
 * @param[out] sub_intf  The number, 0 for a main interface.
 * @return 0, or a failure for every type but 2.
 */
int32_t if_index_phy_eth_get_sub_intf(if_index_t, uint16_t *sub_intf);

/**
 * Tells the channel number of a port channel.
 *
 * @param[out] channel  The number.
 * @return 0, or a failure for every type but 4 and 22.
 */
int32_t if_index_port_channel_get_channel_num(if_index_t, uint16_t *channel);

/**
 * Tells the subtype of a port channel.
 *
 * @param[out] subtype  The subtype, 0 to 3.
 * @return 0, or a failure for every type but 4 and 22.
 */
int32_t if_index_port_channel_get_subtype(if_index_t, uint8_t *subtype);

/**
 * Tells the tunnel number of an FCIP interface.
 *
 * @param[out] tunnel  The number.
 * @return 0, or a failure for every other kind.
 */
int32_t if_index_fcip_get_tunnel(if_index_t, uint16_t *tunnel);

/**
 * Builds the index of a Fibre Channel port. The fourth argument is 0.
 *
 * @param[out] out   The index.
 * @param[in]  slot  The slot, counted from 0.
 * @param[in]  port  The port, counted from 0.
 * @return 0, or a failure when a number does not fit.
 */
int32_t if_index_phy_fc_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t);

/**
 * Builds the index of an Ethernet port. The fourth argument is 0.
 *
 * @copydetails if_index_phy_fc_port_init
 */
int32_t if_index_phy_eth_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t);

/**
 * Builds the index of a port channel of type 4 and subtype 0.
 *
 * @param[out] out      The index.
 * @param[in]  channel  The channel number.
 * @return 0, or a failure when the number does not fit.
 */
int32_t if_index_port_channel_init(if_index_t *out, uint16_t channel);

/**
 * Builds the index of an FCIP interface.
 *
 * @param[out] out     The index.
 * @param[in]  tunnel  The tunnel number.
 * @return 0, or a failure when the number does not fit.
 */
int32_t if_index_fcip_port_init(if_index_t *out, uint16_t tunnel);

/**
 * Turns an index to network byte order.
 *
 * @return The index in network order.
 */
uint32_t hton_if_index(if_index_t);

/**
 * Turns an index to host byte order.
 *
 * @return The index in host order.
 */
if_index_t ntoh_if_index(uint32_t);

/**
 * Writes the display name of an interface. The second argument is its index.
 *
 * @param[out] text  The name, NUL-terminated; room for at least 256 bytes.
 * @return The number of characters.
 */
int32_t sprintf_if_index(char *text, if_index_t);

PLATFORM_END_DECLS

/** @} */
#endif
