/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @defgroup port_mgr_port_iterator port_iterator.h: iterators
 * @ingroup port_mgr
 * @brief What a caller keeps of a received message while it steps through ports.
 *
 * An iterator belongs to one thread at a time; apart from that, both functions are thread-safe.
 * @{
 */
#ifndef PORT_MGR_PORT_ITERATOR_H
#define PORT_MGR_PORT_ITERATOR_H

#include "platform/mts.h"
#include "port_mgr/types.h"

PM_BEGIN_DECLS

/**
 * An iterator, 36 bytes, host order.
 *
 * The library reads nothing of it but the mark: the rest is the caller's. It holds no reference to the message that it
 * was made from.
 */
typedef struct PM_PACKED pm_iterator {
    uint32_t mark;             /**< 1 as long as the iterator lives */
    uint32_t message_id;       /**< the message's identifier, as mts_msg_id_get() tells it */
    uint32_t message_words[5]; /**< the first five words of the message record, as they are */
    uint32_t reserved[2];      /**< 0 */
} pm_iterator_t;
PM_STATIC_ASSERT(sizeof(pm_iterator_t) == 36, "pm_iterator_t is nine words for every caller");

/**
 * Makes an iterator from a received message.
 *
 * @param[out] iterator  The iterator, the caller's to release with pm_iterator_destroy(); null when memory ran out.
 * @param[in]  message   The message, which stays the caller's.
 * @return 0; PM_ERR_INVALID_PARAM for a null argument, after an assertion report and with nothing written; or 1 when
 *     memory ran out, after a line on standard output.
 */
PM_API uint32_t pm_iterator_create(pm_iterator_t **iterator, const mts_msg_t *message);

/**
 * Releases an iterator and sets the caller's variable to null.
 *
 * @param[in,out] iterator  The caller's variable.
 * @return 0, or PM_ERR_INVALID_PARAM after an assertion report, with nothing released, when `iterator`, or what it
 *     points to, is null or the mark is not 1.
 */
PM_API uint32_t pm_iterator_destroy(pm_iterator_t **iterator);

PM_END_DECLS

/** @} */
#endif
