/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_dev_mts_service mts_service.h: serving
 * @ingroup platform_dev
 * @brief The side of the transport that serves: one event loop for the services of a process.
 *
 * A server belongs to the thread that runs it; only mts_server_stop() may be called from elsewhere.
 * @{
 */
#ifndef PLATFORM_DEV_MTS_SERVICE_H
#define PLATFORM_DEV_MTS_SERVICE_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** A server: its services, its clients and its loop. */
typedef struct mts_server mts_server_t;

/** Who asks, as the kernel knew them when they connected: nothing that a client sends can change it. */
typedef struct mts_client {
    uint32_t uid;           /**< the effective user */
    uint32_t group_count;   /**< at least 1 */
    const uint32_t *groups; /**< the effective group, then the supplementary ones, which may name it again */
} mts_client_t;

/** One request as a service sees it. It lives until the service returns. */
typedef struct mts_request {
    uint32_t node;         /**< the node that it was sent to */
    uint32_t sap;          /**< the SAP that it was sent to */
    uint32_t opcode;       /**< what is asked */
    uint32_t is_cmi;       /**< 1 when the client waits in cmi_req_resp(), else 0 */
    uint32_t kind;         /**< the CMI request kind; 0 for a message */
    uint32_t payload_size; /**< bytes behind `payload` */
    const void *payload;   /**< null when there is none; TLV_ZEROED_TAIL_SIZE zeroed bytes follow it */
    mts_client_t client;   /**< who asks */
} mts_request_t;

/**
 * The answer under construction. A service that touches it in none of the ways below leaves the request unanswered.
 */
typedef struct mts_reply mts_reply_t;

/**
 * Gives the answer a payload and returns where to write it, zeroed. A second call replaces the first.
 *
 * @param[in,out] reply  The answer.
 * @param[in]     size   The bytes of the payload; 0 sends an answer without payload.
 * @return The payload's bytes; null when the payload is too large or memory ran out. The answer is then a failure,
 *     EMSGSIZE or ENOMEM, unless the service gives another one.
 */
void *mts_reply_payload(mts_reply_t *reply, uint32_t size);

/**
 * Gives the answer a payload of the service's own bytes, which are sent from where they are.
 *
 * A payload that is too large makes the answer a failure, EMSGSIZE.
 *
 * @param[in,out] reply    The answer.
 * @param[in]     payload  The bytes; the service leaves them as they are until it is called again.
 * @param[in]     size     Their number.
 */
void mts_reply_lend_payload(mts_reply_t *reply, const void *payload, uint32_t size);

/**
 * Makes cmi_req_resp() return a status to the client. For a message, the answer has no payload.
 *
 * @param[in,out] reply   The answer.
 * @param[in]     status  The status, nonzero.
 */
void mts_reply_fail(mts_reply_t *reply, uint32_t status);

/**
 * Handles one request. No exception may leave it: the transport has a C++ run-time library of its own.
 *
 * `context` is what mts_server_add_service() was given, `request` what is asked, and `reply` the answer to give.
 */
typedef void (*mts_service_t)(void *context, const mts_request_t *request, mts_reply_t *reply);

/**
 * Called from the loop when `fd` can be read. No exception may leave it.
 *
 * `context` is what mts_server_add_fd() was given.
 */
typedef void (*mts_fd_handler_t)(void *context, int fd);

/**
 * Makes a server without services in the run-time directory, which must be the caller's own.
 *
 * Its clients are processes of the same user, of root and, when the directory is shared with a group, of the group's
 * members; others find their connections closed.
 *
 * @return The server, the caller's to end with mts_server_destroy(), or null with errno on failure.
 */
mts_server_t *mts_server_create(void);

/**
 * Ends all connections and frees a server.
 *
 * @param[in] server  The server, or null.
 */
void mts_server_destroy(mts_server_t *server);

/**
 * Answers a SAP on a node from now on.
 *
 * @param[in] server   The server.
 * @param[in] node     The node.
 * @param[in] sap      The SAP.
 * @param[in] service  What handles its requests.
 * @param[in] context  What it is called with; it stays the caller's.
 * @return 0, or -1 with errno: EADDRINUSE when a live service answers there.
 */
int32_t mts_server_add_service(mts_server_t *server, uint32_t node, uint32_t sap, mts_service_t service, void *context);

/**
 * Answers a SAP on a node no longer and ends the connections of its clients.
 *
 * Their requests fail with EHOSTUNREACH from then on. A service may remove itself: the request at hand stays
 * unanswered.
 *
 * @param[in] server  The server.
 * @param[in] node    The node.
 * @param[in] sap     The SAP.
 * @return 0, or -1 with errno: ENOENT when this server does not answer there.
 */
int32_t mts_server_remove_service(mts_server_t *server, uint32_t node, uint32_t sap);

/**
 * Watches a descriptor of the caller's, such as a signalfd, in the same loop.
 *
 * @param[in] server   The server.
 * @param[in] fd       The descriptor, which stays the caller's.
 * @param[in] handler  What is called when it can be read.
 * @param[in] context  What it is called with; it stays the caller's.
 * @return 0, or -1 with errno.
 */
int32_t mts_server_add_fd(mts_server_t *server, int fd, mts_fd_handler_t handler, void *context);

/**
 * Serves until mts_server_stop().
 *
 * @param[in] server  The server.
 * @return 0, or -1 with errno.
 */
int32_t mts_server_run(mts_server_t *server);

/**
 * Ends mts_server_run() after the request at hand. Safe on any thread and in signal handlers.
 *
 * @param[in] server  The server.
 */
void mts_server_stop(mts_server_t *server);

PLATFORM_END_DECLS

/** @} */
#endif
