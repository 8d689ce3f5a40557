// SPDX-License-Identifier: Apache-2.0
// service_address.h: where a service's socket lies.
#ifndef PLATFORM_DEV_MTS_SERVICE_ADDRESS_H
#define PLATFORM_DEV_MTS_SERVICE_ADDRESS_H

#include <sys/un.h>

#include <cstdint>

#include "common/runtime_dir.h"

namespace platform_dev {

// Writes the address of the service `sap` on `node`: a socket named like "fe000000-43". Returns false with errno.
[[nodiscard]] bool service_address(const runtime_directory &directory, uint32_t node, uint32_t sap,
                                   sockaddr_un &address);

// Writes the path of the file whose lock the running service holds: the socket's name and ".lock".
[[nodiscard]] bool service_lock_path(const runtime_directory &directory, uint32_t node, uint32_t sap,
                                     path_buffer &path);

}  // namespace platform_dev

#endif
