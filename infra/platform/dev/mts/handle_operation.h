// SPDX-License-Identifier: Apache-2.0
// handle_operation.h: how every operation on a handle begins and ends.
#ifndef PLATFORM_DEV_MTS_HANDLE_OPERATION_H
#define PLATFORM_DEV_MTS_HANDLE_OPERATION_H

#include <cerrno>
#include <new>

#include "mts/handle_table.h"

namespace platform_dev {

// Runs `operation` on the handle's queue and keeps the error number it returns for mts_errno_get. Returns that number,
// or 0; EBADF when the handle is not open, ENOMEM when memory ran out.
template <typename operation_t>
[[nodiscard]] int run_on_handle(mts_handle_t handle, operation_t operation) {
    message_queue *queue = find_queue(handle);
    if (!queue) return EBADF;
    int error = ENOMEM;
    try {
        error = operation(*queue);
    } catch (const std::bad_alloc &) {
    }
    if (error != 0) queue->set_last_error(error);
    return error;
}

}  // namespace platform_dev

#endif
