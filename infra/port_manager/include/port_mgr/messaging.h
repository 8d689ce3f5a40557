/* SPDX-License-Identifier: Apache-2.0 */
/* messaging.h: exchanges of one request and one answer over the message transport. A handle belongs to one thread at a
 * time; apart from that, all functions are thread-safe. */
#ifndef PORT_MGR_MESSAGING_H
#define PORT_MGR_MESSAGING_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/* Receives as mts_recv does, again and again while a signal interrupts it. For callers that receive the answer to a
 * send-only request themselves.
 *
 * handle    the caller's queue
 * response  out: the message, the caller's to release with mts_drop
 * options   what to wait for, as mts_recv takes it
 *
 * Returns what the last mts_recv returned: -1 on a failure other than an interruption. */
PM_API int32_t pm_mts_recv_with_eintr(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options);

/* Sends one request and waits for its answer, for services that the functions of this library do not speak to.
 *
 * node, sap, opcode      where to, and what is asked
 * payload, payload_size  the request's bytes as the service wants them; they stay the caller's
 * response               out: the answer, the caller's to release with mts_drop
 * wait                   the longest wait in seconds
 *
 * Returns 0, or -1 on any failure; then there is nothing to release. */
PM_API int32_t pm_ips_send_receive(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode,
                                   const void *payload, uint32_t payload_size, mts_msg_t *response, uint32_t wait);

/* The resources of a module that are counted. */
enum {
    PM_RESOURCE_PORTS = 1,         /* ports; those that are up are in use */
    PM_RESOURCE_BB_CREDITS = 2,    /* receive buffer credits of Fibre Channel ports */
    PM_RESOURCE_BANDWIDTH = 3,     /* Mbit/s; the speeds of the ports that are up are in use */
    PM_RESOURCE_SUB_INTERFACES = 4 /* sub-interfaces of Ethernet ports */
};

/* One resource of one module as it travels, 12 bytes, network order. */
typedef struct PM_PACKED pm_module_resource {
    uint16_t module;   /* the module's number, counted from 1 */
    uint16_t resource; /* PM_RESOURCE_... */
    uint32_t total;    /* how much there is */
    uint32_t used;     /* how much of it is in use */
} pm_module_resource_t;
PM_STATIC_ASSERT(sizeof(pm_module_resource_t) == 12, "pm_module_resource_t travels as 12 bytes");

/* Asks the module resource service on `node` about a module and waits up to 10 seconds for the answer.
 *
 * range_count, ranges  the interfaces whose use counts, host order; 0: all. Null ranges with a count go out as zeros
 * module               the module's number, counted from 1; 0 for every module that the node knows
 * node                 the supervisor, or the line card that the module is
 * response             out: the answer, the caller's to read and to release with mts_drop: a status word, and when that
 *                      is 0 the number of records, both in network order, and pm_module_resource_t records, of each
 *                      module in the order of PM_RESOURCE_... without those of which there is nothing. The status is
 *                      PM_ERR_INVALID_RANGE for a module that the node does not know
 *
 * Returns 0; 1 when memory ran out, after a line on standard output; or the transport's error number. Arguments are not
 * checked. */
PM_API uint32_t pm_get_module_resources(mts_handle_t handle, uint16_t range_count, const pm_if_index_range_t *ranges,
                                        uint16_t module, uint32_t node, mts_msg_t *response);

PM_END_DECLS

#endif
