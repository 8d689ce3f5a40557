/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_messaging messaging.h: messages
 * @ingroup port_mgr
 * @brief Exchanges of one request and one answer over the message transport.
 *
 * A handle belongs to one thread at a time; apart from that, all functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_MESSAGING_H
#define PORT_MGR_MESSAGING_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * Receives as mts_recv() does, again and again while a signal interrupts it.
 *
 * For callers that receive the answer to a send-only request themselves.
 *
 * @param[in]  handle    The caller's queue.
 * @param[out] response  The message, the caller's to release with mts_drop().
 * @param[in]  options   What to wait for, as mts_recv() takes it.
 * @return What the last mts_recv() returned: -1 on a failure other than an interruption.
 */
PM_API int32_t pm_mts_recv_with_eintr(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options);

/**
 * Sends one request and waits for its answer, for services that the functions of this library do not speak to.
 *
 * @param[in]  handle        The caller's queue.
 * @param[in]  node          The node of the service.
 * @param[in]  sap           The SAP of the service.
 * @param[in]  opcode        What is asked.
 * @param[in]  payload       The request's bytes as the service wants them; they stay the caller's.
 * @param[in]  payload_size  The number of these bytes.
 * @param[out] response      The answer, the caller's to release with mts_drop().
 * @param[in]  wait          The longest wait in seconds.
 * @return 0, or -1 on any failure; then there is nothing to release.
 */
PM_API int32_t pm_ips_send_receive(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode,
                                   const void *payload, uint32_t payload_size, mts_msg_t *response, uint32_t wait);

/** The resources of a module that are counted. */
enum {
    PM_RESOURCE_PORTS = 1,         /**< ports; those that are up are in use */
    PM_RESOURCE_BB_CREDITS = 2,    /**< receive buffer credits of Fibre Channel ports */
    PM_RESOURCE_BANDWIDTH = 3,     /**< Mbit/s; the speeds of the ports that are up are in use */
    PM_RESOURCE_SUB_INTERFACES = 4 /**< sub-interfaces of Ethernet ports */
};

/** One resource of one module as it travels, 12 bytes, network order. */
typedef struct PM_PACKED pm_module_resource {
    uint16_t module;   /**< the module's number, counted from 1 */
    uint16_t resource; /**< PM_RESOURCE_... */
    uint32_t total;    /**< how much there is */
    uint32_t used;     /**< how much of it is in use */
} pm_module_resource_t;
PM_STATIC_ASSERT(sizeof(pm_module_resource_t) == 12, "pm_module_resource_t travels as 12 bytes");

/**
 * Asks the module resource service on a node about a module and waits up to 10 seconds for the answer.
 *
 * The answer is the caller's to read: a status word, and when that is 0 the number of records, both in network order,
 * and pm_module_resource_t records, of each module in the order of PM_RESOURCE_... without those of which there is
 * nothing. The status is PM_ERR_INVALID_RANGE for a module that the node does not know.
 *
 * @param[in]  handle       The caller's queue.
 * @param[in]  range_count  The number of ranges; 0: all interfaces.
 * @param[in]  ranges       The interfaces whose use counts, host order. Null with a count goes out as zeros.
 * @param[in]  module       The module's number, counted from 1; 0 for every module that the node knows.
 * @param[in]  node         The supervisor, or the line card that the module is.
 * @param[out] response     The answer, the caller's to release with mts_drop().
 * @return 0; 1 when memory ran out, after a line on standard output; or the transport's error number. Arguments are not
 *     checked.
 */
PM_API uint32_t pm_get_module_resources(mts_handle_t handle, uint16_t range_count, const pm_if_index_range_t *ranges,
                                        uint16_t module, uint32_t node, mts_msg_t *response);

PM_END_DECLS

/** @} */
#endif
