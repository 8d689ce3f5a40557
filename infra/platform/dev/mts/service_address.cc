// SPDX-License-Identifier: Apache-2.0
#include "mts/service_address.h"

#include <sys/socket.h>

#include <cstdio>
#include <cstring>

namespace platform_dev {

namespace {

bool service_file(const runtime_directory &directory, uint32_t node, uint32_t sap, const char *suffix,
                  path_buffer &path) {
    char name[max_runtime_name + 1];
    std::snprintf(name, sizeof name, "%08x-%u%s", node, sap, suffix);
    return runtime_file(directory, name, path);
}

}  // namespace

bool service_address(const runtime_directory &directory, uint32_t node, uint32_t sap, sockaddr_un &address) {
    path_buffer path;
    if (!service_file(directory, node, sap, "", path)) return false;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    return true;
}

bool service_lock_path(const runtime_directory &directory, uint32_t node, uint32_t sap, path_buffer &path) {
    return service_file(directory, node, sap, ".lock", path);
}

}  // namespace platform_dev
