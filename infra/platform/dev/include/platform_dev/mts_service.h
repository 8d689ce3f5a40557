/* SPDX-License-Identifier: Apache-2.0 */
/* mts_service.h: the side of the transport that serves: one event loop for the services of a process.
 *
 * A server belongs to the thread that runs it; only mts_server_stop may be called from elsewhere. */
#ifndef PLATFORM_DEV_MTS_SERVICE_H
#define PLATFORM_DEV_MTS_SERVICE_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

typedef struct mts_server mts_server_t;

/* Who asks, as the kernel knew them when they connected: nothing that a client sends can change it. */
typedef struct mts_client {
    uint32_t uid;           /**< the effective user */
    uint32_t group_count;   /**< at least 1 */
    const uint32_t *groups; /**< the effective group, then the supplementary ones, which may name it again */
} mts_client_t;

/* One request as a service sees it. It lives until the service returns. */
typedef struct mts_request {
    uint32_t node; /**< where it was sent to */
    uint32_t sap;
    uint32_t opcode;
    uint32_t is_cmi;       /**< 1 when the client waits in cmi_req_resp, else 0 */
    uint32_t kind;         /**< the CMI request kind; 0 for a message */
    uint32_t payload_size; /**< bytes behind `payload` */
    const void *payload;   /**< null when there is none; TLV_ZEROED_TAIL_SIZE zeroed bytes follow it */
    mts_client_t client;
} mts_request_t;

/* The answer under construction. A service that touches it in none of the ways below leaves the request
 * unanswered. */
typedef struct mts_reply mts_reply_t;

/* Gives the answer a payload of `size` bytes and returns where to write it, zeroed. A second call replaces the
 * first. Size 0 sends an answer without payload. Returns null when the payload is too large or memory ran out; the
 * answer is then a failure, EMSGSIZE or ENOMEM, unless the service gives another one. */
void *mts_reply_payload(mts_reply_t *reply, uint32_t size);

/* The same with bytes of the service's own, which are sent from where they are: the service leaves them as they are
 * until it is called again. A payload that is too large makes the answer a failure, EMSGSIZE. */
void mts_reply_lend_payload(mts_reply_t *reply, const void *payload, uint32_t size);

/* Makes cmi_req_resp return `status` (nonzero) to the client. For a message, the answer has no payload. */
void mts_reply_fail(mts_reply_t *reply, uint32_t status);

/* Handles one request. `context` is what mts_server_add_service was given. No exception may leave it: the transport has
 * a C++ run-time library of its own. */
typedef void (*mts_service_t)(void *context, const mts_request_t *request, mts_reply_t *reply);

/* Called from the loop when `fd` can be read. No exception may leave it. */
typedef void (*mts_fd_handler_t)(void *context, int fd);

/* Makes a server without services in the run-time directory, which must be the caller's own. Its clients are processes
 * of the same user, of root and, when the directory is shared with a group, of the group's members; others find their
 * connections closed. Returns null with errno on failure. */
mts_server_t *mts_server_create(void);

/* Ends all connections and frees the server. Null is allowed. */
void mts_server_destroy(mts_server_t *server);

/* Answers `sap` on `node`. Returns 0, or -1 with errno: EADDRINUSE when a live service answers there. */
int32_t mts_server_add_service(mts_server_t *server, uint32_t node, uint32_t sap, mts_service_t service, void *context);

/* Answers `sap` on `node` no longer and ends the connections of its clients; their requests fail with EHOSTUNREACH from
 * then on. A service may remove itself: the request at hand stays unanswered. Returns 0, or -1 with errno: ENOENT when
 * this server does not answer there. */
int32_t mts_server_remove_service(mts_server_t *server, uint32_t node, uint32_t sap);

/* Watches a descriptor of the caller's, such as a signalfd, in the same loop. Returns 0, or -1 with errno. */
int32_t mts_server_add_fd(mts_server_t *server, int fd, mts_fd_handler_t handler, void *context);

/* Serves until mts_server_stop. Returns 0, or -1 with errno. */
int32_t mts_server_run(mts_server_t *server);

/* Ends mts_server_run after the request at hand. Safe on any thread and in signal handlers. */
void mts_server_stop(mts_server_t *server);

PLATFORM_END_DECLS

#endif
