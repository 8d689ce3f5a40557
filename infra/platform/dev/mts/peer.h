// SPDX-License-Identifier: Apache-2.0
// peer.h: who is at the other end of a socket. The kernel tells who they were when they connected or, of a service,
// when it began to listen; nothing that they send can change it.
#ifndef PLATFORM_DEV_MTS_PEER_H
#define PLATFORM_DEV_MTS_PEER_H

#include <optional>
#include <vector>

#include "common/runtime_dir.h"

namespace platform_dev {

struct peer {
    uid_t user;
    std::vector<gid_t> groups;  // the primary one first
};

// Nothing when the kernel does not tell. May throw std::bad_alloc.
[[nodiscard]] std::optional<peer> peer_of(int socket);

// Whether a client is our own user or root.
[[nodiscard]] bool is_trusted(const peer &client);

// Whether a client may ask services of ours in the directory: our own user, root, and the group's members in a shared
// one.
[[nodiscard]] bool is_admitted(const peer &client, const runtime_directory &directory);

// Whether the other end runs as this user.
[[nodiscard]] bool is_peer_of(int socket, uid_t user);

}  // namespace platform_dev

#endif
