/* SPDX-License-Identifier: Apache-2.0 */
/* if_index.h: arithmetic of interface indexes, in libutils.
 *
 * The getters return 0 on success and leave their result untouched on failure. All functions are pure and
 * thread-safe. */
#ifndef PLATFORM_IF_INDEX_H
#define PLATFORM_IF_INDEX_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/* Interface types. */
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
    IF_TYPE_OTHER = 254
};

/* The interface type: which kind of interface the index names. Index 0, where a walk starts, has type 0; a type that
 * the platform does not know is a failure. */
int32_t if_index_get_type(if_index_t, uint8_t *type);

/* Slot and port of a slot/port interface, both counted from 0. Fails for every other kind. */
int32_t if_index_get_slot(if_index_t, uint8_t *slot);
int32_t if_index_get_port(if_index_t, uint8_t *port);

/* The sub-interface number, 0 for a main interface. Fails for a kind without sub-interfaces: only the types 2, 4, 22
 * and 26 have them. */
int32_t if_index_get_sub_intf(if_index_t, uint16_t *sub_intf);

/* The main interface of a sub-interface; the index itself when it is a main interface. */
if_index_t if_index_get_mainintf_from_subintf(if_index_t);

/* 1 for a sub-interface of a port channel (type 4 or 22), else 0. */
int32_t if_index_is_port_channel_sub_interface(if_index_t);

/* The sub-interface number of a physical Ethernet port (type 2). */
int32_t if_index_phy_eth_get_sub_intf(if_index_t, uint16_t *sub_intf);

/* Channel number and subtype of a port channel (type 4 or 22). */
int32_t if_index_port_channel_get_channel_num(if_index_t, uint16_t *channel);
int32_t if_index_port_channel_get_subtype(if_index_t, uint8_t *subtype);

/* The tunnel number of an FCIP interface. */
int32_t if_index_fcip_get_tunnel(if_index_t, uint16_t *tunnel);

/* Builders: store the index of the interface named and return 0. A number that does not fit is a failure and stores
 * nothing. The fourth argument is 0. */
int32_t if_index_phy_fc_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t);
int32_t if_index_phy_eth_port_init(if_index_t *out, uint8_t slot, uint8_t port, uint32_t);
int32_t if_index_port_channel_init(if_index_t *out, uint16_t channel);
int32_t if_index_fcip_port_init(if_index_t *out, uint16_t tunnel);

/* To and from network byte order. */
uint32_t hton_if_index(if_index_t);
if_index_t ntoh_if_index(uint32_t);

/* Writes the display name, NUL-terminated, into `text`, which has room for at least 256 bytes. Returns the
 * number of characters. */
int32_t sprintf_if_index(char *text, if_index_t);

PLATFORM_END_DECLS

#endif
