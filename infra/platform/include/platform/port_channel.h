/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_port_channel port_channel.h: members of port channels
 * @ingroup platform
 * @brief Who is a member of which port channel.
 *
 * A member record belongs to the function that fills it; its 32-bit words are in host order and need not be
 * aligned. The caller writes the channel's if_index, calls, and reads the number of members and the first one.
 * @{
 */
#ifndef PLATFORM_PORT_CHANNEL_H
#define PLATFORM_PORT_CHANNEL_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/**
 * Looks up the members of a port channel in the port-channel map. In libpcm.
 *
 * @param[in,out] record  172 bytes: channel at offset 0, member count at 8, first member at 32.
 * @return 0 on success.
 */
int32_t pcmap_get_port_channel(void *record);

/**
 * Looks up the members of a port channel in the port-channel database. Looked up at run time in libpcm_sdb.so.
 *
 * @param[in,out] record  144 bytes: channel at offset 6, member count at 18, first member at 26.
 * @return 0 on success.
 */
int32_t pcm_get_pc_info(void *record);

/**
 * Asks the port-channel database for a member. Looked up at run time in libpcm_sdb.so.
 *
 * @param[in] first   A port.
 * @param[in] second  A channel.
 * @return 0 when the port is a member of the channel.
 */
int32_t pcm_get_pc_for_port(uint32_t first, uint32_t second);

/**
 * Makes this process a subscriber of the port-channel database. Looked up at run time in libfsrv_client.so.
 *
 * @param[in] subscriber  Seven 32-bit words: 7, a pointer to the subscriber's name, 262, and zeros; in a 64-bit build
 *                        word 1 is a pointer of the natural width in a naturally aligned structure.
 * @return 0 on success.
 */
int32_t fsrv_sdb_subscriber_init(void *subscriber);

PLATFORM_END_DECLS

/** @} */
#endif
