// SPDX-License-Identifier: Apache-2.0
// handle_table.h: which handles are open, and the queue behind each.
#ifndef PLATFORM_DEV_MTS_HANDLE_TABLE_H
#define PLATFORM_DEV_MTS_HANDLE_TABLE_H

#include <memory>

#include "mts/message_queue.h"
#include "platform/types.h"

namespace platform_dev {

// Opens a handle for the queue. Returns 0 with errno EMFILE when too many are open. Thread-safe.
[[nodiscard]] mts_handle_t open_handle(std::unique_ptr<message_queue> queue);

// Ends the handle and returns its queue, or null when it is not open. Thread-safe.
[[nodiscard]] std::unique_ptr<message_queue> close_handle(mts_handle_t handle);

// The queue of an open handle, or null. Takes no lock. The queue lives until its handle is closed.
[[nodiscard]] message_queue *find_queue(mts_handle_t handle);

}  // namespace platform_dev

#endif
