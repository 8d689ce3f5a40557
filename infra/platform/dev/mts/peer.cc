// SPDX-License-Identifier: Apache-2.0
#include "mts/peer.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace platform_dev {

namespace {

std::optional<ucred> credentials_of(int socket) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size) != 0) return std::nullopt;
    return credentials;
}

// Appends the supplementary groups. Without room, the kernel says how much they take.
bool append_groups(int socket, std::vector<gid_t> &groups) {
    socklen_t size = 0;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, nullptr, &size) == 0) return true;
    if (errno != ERANGE) return false;
    const size_t before = groups.size();
    groups.resize(before + size / sizeof(gid_t));
    return getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, &groups[before], &size) == 0;
}

}  // namespace

std::optional<peer> peer_of(int socket) {
    const std::optional<ucred> credentials = credentials_of(socket);
    if (!credentials) return std::nullopt;
    peer found{credentials->uid, {credentials->gid}};
    if (!append_groups(socket, found.groups)) return std::nullopt;
    return found;
}

bool is_trusted(const peer &client) { return client.user == geteuid() || client.user == 0; }

bool is_admitted(const peer &client, const runtime_directory &directory) {
    if (is_trusted(client)) return true;
    return directory.is_shared && std::ranges::find(client.groups, directory.group) != client.groups.end();
}

bool is_peer_of(int socket, uid_t user) {
    const std::optional<ucred> credentials = credentials_of(socket);
    return credentials && credentials->uid == user;
}

}  // namespace platform_dev
