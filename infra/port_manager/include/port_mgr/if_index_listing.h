/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_if_index_listing if_index_listing.h: lists of interfaces
 * @ingroup port_mgr
 * @brief Which interfaces of a type there are.
 *
 * A handle belongs to one thread at a time; apart from that, both functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_IF_INDEX_LISTING_H
#define PORT_MGR_IF_INDEX_LISTING_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/** The size of a startup block in bytes. */
#define PM_STARTUP_BLOCK_SIZE 256u

/**
 * Asks the service that owns interfaces of a type for the indexes of those that exist.
 *
 * The answer is the caller's to read, with mts_payload_get() and mts_payload_size(). It holds a status word, and when
 * that is 0 the number of interfaces and their indexes in ascending order, sub-interfaces among them, all in network
 * order.
 *
 * @param[in]  type     The interface type; others than 1, 2, 5, 11, 13, 20, 26 and 254 leave an assertion report, and
 *                      the port manager is asked.
 * @param[in]  handle   The caller's queue.
 * @param[out] message  Carries the request out; then the answer, the caller's to release with mts_drop().
 * @param[in]  wait     The longest wait in seconds.
 * @return 0 when an answer has been received, else the transport's error number, with no answer in `message`.
 */
PM_API uint32_t pm_get_if_index_listing(uint8_t type, mts_handle_t handle, mts_msg_t *message, uint32_t wait);

/**
 * Asks as pm_get_if_index_listing() does for the interfaces of the type that a startup description names, whether or
 * not they exist, in its order and each once.
 *
 * @param[in]  startup_block  PM_STARTUP_BLOCK_SIZE bytes, sent as they are: names of interfaces as the services show
 *                            them, ranges of their last number ("fc1/1-4") and commas between them, NUL-terminated.
 *                            Null: the function returns 0 at once, has sent nothing and leaves `message` untouched.
 * @param[in]  type           The interface type.
 * @param[in]  handle         The caller's queue.
 * @param[out] message        The answer, as of pm_get_if_index_listing().
 * @param[in]  wait           The longest wait in seconds.
 * @return As pm_get_if_index_listing().
 */
PM_API uint32_t pm_get_startup_if_index_listing(const void *startup_block, uint8_t type, mts_handle_t handle,
                                                mts_msg_t *message, uint32_t wait);

PM_END_DECLS

/** @} */
#endif
