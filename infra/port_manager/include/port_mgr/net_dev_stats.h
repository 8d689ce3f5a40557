/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_net_dev_stats net_dev_stats.h: counters of the local kernel
 * @ingroup port_mgr
 * @brief The counters that the local kernel keeps of its own network interfaces.
 * @{
 */
#ifndef PORT_MGR_NET_DEV_STATS_H
#define PORT_MGR_NET_DEV_STATS_H

#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * The counters of one network interface, 64 bytes, host order.
 *
 * Totals of bytes and packets are cut to their low 32 bits; so are the others in the 64-bit build, while those of the
 * 32-bit build stop at 2147483647.
 */
typedef struct PM_PACKED pm_net_dev_stats {
    uint32_t rx_packets;        /**< packets received */
    uint32_t tx_packets;        /**< packets transmitted */
    uint32_t rx_bytes;          /**< bytes received */
    uint32_t tx_bytes;          /**< bytes transmitted */
    uint32_t rx_errors;         /**< receive errors */
    uint32_t tx_errors;         /**< transmit errors */
    uint32_t rx_dropped;        /**< packets dropped while receiving */
    uint32_t tx_dropped;        /**< packets dropped while transmitting */
    uint32_t rx_multicast;      /**< multicast packets received */
    uint32_t rx_compressed;     /**< compressed packets received */
    uint32_t tx_compressed;     /**< compressed packets transmitted */
    uint32_t rx_frame_errors;   /**< framing errors received */
    uint32_t rx_fifo_errors;    /**< receive FIFO overruns */
    uint32_t tx_carrier_errors; /**< carrier losses while transmitting */
    uint32_t tx_fifo_errors;    /**< transmit FIFO underruns */
    uint32_t collisions;        /**< collisions */
} pm_net_dev_stats_t;
PM_STATIC_ASSERT(sizeof(pm_net_dev_stats_t) == 64, "pm_net_dev_stats_t is sixteen words for every caller");

/**
 * Reads the counters of a network interface of the local machine from `/proc/net/dev`. Thread-safe.
 *
 * The first line that begins with the name decides: where a longer name that begins with this one comes before it
 * ("eth10" before "eth1"), the name is not found.
 *
 * @param[in]  name   The kernel's name of the interface, NUL-terminated.
 * @param[out] stats  Its counters; a column that the kernel does not show is 0.
 * @return 0, or -1 with the output untouched: for a null argument, an empty name, a file that cannot be read, or a name
 *     that is not there.
 */
PM_API int32_t pm_get_proc_net_dev_stats(const char *name, pm_net_dev_stats_t *stats);

PM_END_DECLS

/** @} */
#endif
