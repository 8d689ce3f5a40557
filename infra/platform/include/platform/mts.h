/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup platform_mts mts.h: the message transport
 * @ingroup platform
 * @brief Queues, requests and answers, in libmts.
 *
 * A handle is a queue of its owner's. A request names a node, a service access point (SAP) on it and an
 * opcode; its payload is copied by the send. Every request has a token, and its answer carries it back.
 * A handle belongs to one thread at a time; different handles may be used on different threads at once.
 * @{
 */
#ifndef PLATFORM_MTS_H
#define PLATFORM_MTS_H

#include "platform/types.h"

PLATFORM_BEGIN_DECLS

/** One message, sent or received. Its 96 bytes lie in the caller's storage. */
typedef struct mts_msg {
    uint32_t word[24]; /**< the transport's to read and write */
} mts_msg_t;

/** What a receive waits for. */
typedef struct mts_recv_options {
    /**
     * Word 0: 1 takes only the answer whose token is in word 3, 0 takes the next message. Word 2: the longest wait in
     * seconds, 0 does not wait. Word 3: the token. All others are 0.
     */
    uint32_t word[9];
} mts_recv_options_t;

/**
 * Sends a request. The last two arguments are 0.
 *
 * @param[in]  handle        The caller's queue.
 * @param[in]  node          The node of the service.
 * @param[in]  sap           The SAP of the service.
 * @param[in]  opcode        What is asked.
 * @param[in]  payload       The request's bytes, which are copied.
 * @param[in]  payload_size  Their number.
 * @param[out] request       Describes the request, for mts_rr_token_get() and mts_drop().
 * @return 0, or -1 with the reason in mts_errno_get(): EHOSTUNREACH (no such service), EAGAIN (its queue is full),
 *     EMSGSIZE (the payload is too large), EBADF (no such handle).
 */
int32_t mts_send(mts_handle_t handle, uint32_t node, uint32_t sap, uint32_t opcode, const void *payload,
                 uint32_t payload_size, mts_msg_t *request, uint32_t, uint32_t);

/**
 * Receives one message.
 *
 * @param[in]  handle    The caller's queue.
 * @param[out] response  The message; its owner releases it with mts_drop().
 * @param[in]  options   What to wait for.
 * @return -1 on failure, anything else on success. mts_errno_get() tells ETIMEDOUT (the wait ended), EINTR (a signal),
 *     EBADF (no such handle), ECONNRESET (the service ended before it answered), EPROTO (what it sent is no answer),
 *     EINVAL (no such token).
 */
int32_t mts_recv(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options);

/**
 * Releases a request or a received message.
 *
 * @param[in]     handle   The caller's queue.
 * @param[in,out] message  The message; a zeroed record holds nothing to release.
 * @return 0, or -1 with the reason in mts_errno_get(): EINVAL (the record is no message, or its message was released
 *     before), EBADF (no such handle; the message is released all the same).
 */
int32_t mts_drop(mts_handle_t handle, mts_msg_t *message);

/**
 * Tells the token that correlates an answer with its request.
 *
 * @param[in] request  The request.
 * @return The token.
 */
uint32_t mts_rr_token_get(const mts_msg_t *request);

/**
 * Tells why the last operation that failed on a handle did.
 *
 * @param[in] handle  The caller's queue.
 * @return The system error number.
 */
uint32_t mts_errno_get(mts_handle_t handle);

/**
 * Tells where the payload of a received message is.
 *
 * @param[in] message  The message.
 * @return The payload, which stays the message's, or null when it has none.
 */
void *mts_payload_get(const mts_msg_t *message);

/**
 * Tells the size of the payload of a received message.
 *
 * @param[in] message  The message.
 * @return The number of bytes that mts_payload_get() points at.
 */
uint32_t mts_payload_size(const mts_msg_t *message);

/**
 * Tells the opcode of a message.
 *
 * @param[in] message  The message.
 * @return The opcode; an answer carries that of its request.
 */
uint32_t mts_opc_get(const mts_msg_t *message);

/**
 * Tells whether a message is an answer.
 *
 * @param[in] message  The message.
 * @return Nonzero when it is.
 */
int32_t mts_is_response(const mts_msg_t *message);

/**
 * Tells the identifier of a message.
 *
 * @param[in] message  The message.
 * @return The identifier.
 */
uint32_t mts_msg_id_get(const mts_msg_t *message);

PLATFORM_END_DECLS

/** @} */
#endif
