/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_ethernet_stats ethernet_stats.h: counters of line cards
 * @ingroup port_mgr
 * @brief The counters that a line card keeps of an Ethernet port or an FCIP tunnel.
 * @{
 */
#ifndef PORT_MGR_ETHERNET_STATS_H
#define PORT_MGR_ETHERNET_STATS_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** What a request is to do besides reading; the line card refuses others. */
enum {
    PM_ETH_STATS_READ = 0, /**< nothing */
    PM_ETH_STATS_CLEAR = 1 /**< set the counters of this one interface to 0, after they were read */
};

/** Indexes of pm_eth_stats_t's traffic. */
enum {
    PM_ETH_TRAFFIC_RX = 0,       /**< everything received */
    PM_ETH_TRAFFIC_TX,           /**< everything transmitted */
    PM_ETH_TRAFFIC_RX_UNICAST,   /**< received for one station */
    PM_ETH_TRAFFIC_TX_UNICAST,   /**< transmitted for one station */
    PM_ETH_TRAFFIC_RX_MULTICAST, /**< received for several stations */
    PM_ETH_TRAFFIC_TX_MULTICAST, /**< transmitted for several stations */
    PM_ETH_TRAFFIC_RX_BROADCAST, /**< received for all stations */
    PM_ETH_TRAFFIC_TX_BROADCAST, /**< transmitted for all stations */
    PM_ETH_TRAFFIC_CLASSES       /**< how many classes there are */
};

/** Counters of one class of traffic, host order. */
typedef struct PM_PACKED pm_eth_traffic {
    uint64_t octets; /**< bytes */
    uint64_t frames; /**< frames */
    uint32_t errors; /**< frames with errors */
    uint32_t drops;  /**< frames dropped */
} pm_eth_traffic_t;

/**
 * The counters of one interface, 320 bytes, host order unless a member says otherwise.
 *
 * Members that are reserved are as they came.
 */
typedef struct PM_PACKED pm_eth_stats {
    uint8_t reserved_0[10];        /**< not used */
    uint16_t communication_status; /**< as it came, network order: 0 when the line card could reach the port */
    uint8_t reserved_12[12];       /**< not used */
    uint32_t result;               /**< as it came: 0 when the line card refused the request */
    uint8_t reserved_28[4];        /**< not used */
    pm_eth_traffic_t traffic[PM_ETH_TRAFFIC_CLASSES]; /**< by class */
    uint32_t seconds_since_clear;                     /**< how long the counters have been counting */
    uint8_t reserved_228[4];                          /**< not used */
    uint64_t rx_pause_frames;                         /**< pause frames received */
    uint64_t tx_pause_frames;                         /**< pause frames transmitted */
    uint32_t crc_errors;                              /**< frames received with a bad checksum */
    uint32_t alignment_errors;                        /**< frames received with a fraction of a byte */
    uint32_t symbol_errors;                           /**< invalid symbols received */
    uint32_t undersize_frames;                        /**< good frames received that were too short */
    uint32_t oversize_frames;                         /**< good frames received that were too long */
    uint32_t fragments;                               /**< bad frames received that were too short */
    uint32_t jabbers;                                 /**< bad frames received that were too long */
    uint32_t rx_overruns;                             /**< frames lost because the receive buffer was full */
    uint32_t tx_underruns;                            /**< frames lost because the transmit buffer ran empty */
    uint32_t collisions;                              /**< collisions */
    uint32_t late_collisions;                         /**< collisions after the first 64 bytes of a frame */
    uint32_t excessive_collisions;                    /**< frames given up after too many collisions */
    uint32_t deferred_frames;                         /**< frames that waited for a busy wire */
    uint32_t carrier_losses;                          /**< carrier lost while transmitting */
    uint32_t link_resets;                             /**< resets of the link */
    uint8_t reserved_308[12];                         /**< not used */
} pm_eth_stats_t;
PM_STATIC_ASSERT(sizeof(pm_eth_stats_t) == 320, "pm_eth_stats_t travels as 320 bytes");

/**
 * Asks the line card that owns an interface for its counters, and waits up to 10 seconds for the answer.
 *
 * A port that cannot be looked up is asked for as number 65535. An answer of another size leaves an assertion report
 * and `stats` untouched, and counts as success.
 *
 * @param[in]  handle        The caller's queue; it belongs to one thread at a time, apart from which the function is
 *                           thread-safe.
 * @param[in]  interface     An Ethernet port, one of its sub-interfaces, for which the port answers, or an FCIP
 *                           interface: its line card and port are looked up.
 * @param[in]  request       The interface that the request names, as messages do; normally the same.
 * @param[in]  request_word  PM_ETH_STATS_...
 * @param[out] stats         The counters; null sends the request all the same, and passes over what the answer says.
 * @return 0; a failed look-up's status, with nothing sent; -1 or an error number when the transport failed, with
 *     `stats` untouched unless it failed only to release the answer; -1 when the line card could not reach the port,
 *     after a line on standard output, with `stats` untouched; or PM_ERR_REJECTED when it refused the request, after a
 *     line on standard output, with `stats` as the answer came, in network order.
 */
PM_API int32_t pm_get_clear_eth_stats(mts_handle_t handle, if_index_t interface, if_index_t request,
                                      uint32_t request_word, pm_eth_stats_t *stats);

PM_END_DECLS

/** @} */
#endif
