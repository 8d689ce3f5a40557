// SPDX-License-Identifier: Apache-2.0
#include "platform_dev/mts_dev.h"

#include <cerrno>
#include <cstring>
#include <new>

#include "common/runtime_dir.h"
#include "mts/handle_operation.h"

using namespace platform_dev;

mts_handle_t mts_dev_open(void) {
    runtime_directory directory;
    if (!runtime_dir(directory)) return 0;
    std::unique_ptr<message_queue> queue(new (std::nothrow) message_queue(directory));
    if (!queue) {
        errno = ENOMEM;
        return 0;
    }
    return open_handle(std::move(queue));
}

int32_t mts_dev_close(mts_handle_t handle) {
    if (close_handle(handle)) return 0;
    errno = EBADF;
    return -1;
}

int mts_dev_descriptor(mts_handle_t handle) {
    int descriptor = -1;
    const auto open = [&](message_queue &queue) { return queue.readable_descriptor(descriptor); };
    if (const int error = run_on_handle(handle, open)) errno = error;
    return descriptor;
}

int32_t mts_dev_runtime_dir(char *path, size_t size) {
    runtime_directory directory;
    if (!runtime_dir_path(directory.path)) return -1;
    const size_t needed = std::strlen(directory.path.data()) + 1;
    if (needed > size) {
        errno = ENAMETOOLONG;
        return -1;
    }
    std::memcpy(path, directory.path.data(), needed);
    return runtime_dir(directory) ? 0 : -1;
}

int32_t mts_dev_share_runtime_dir(uint32_t *group) {
    runtime_directory directory;
    if (!own_runtime_dir(directory) || (!directory.is_shared && !share_runtime_dir(directory, *group))) return -1;
    *group = directory.group;
    return 0;
}
