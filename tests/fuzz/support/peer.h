// SPDX-License-Identifier: Apache-2.0
// peer.h: the other side of a connection of the transport, which sends whatever the fuzzer wants.
//
// The input is a list of packets: a byte of flags, two bytes of the length, then the bytes. Flags: 1 sends a memory
// file along, 2 seals it, 4 makes it as large as the header in the packet says, 8 sends it twice, and 16 puts a good
// header behind the bytes: most inputs would not get past it else. A memory file with a good header comes in a packet
// of its own, behind the one that announces it; flag 32 leaves it with the announcement.
#ifndef FUZZ_SUPPORT_PEER_H
#define FUZZ_SUPPORT_PEER_H

#include <string>
#include <vector>

#include "mts/frame.h"
#include "support/fuzz.h"

namespace fuzz {

struct packet {
    std::vector<uint8_t> content;
    bool has_file;
    bool is_sealed;
    bool is_sent_twice;
    size_t file_size;
};

// `kind` and `token` are those of the good headers.
std::vector<packet> packets_in(bytes input, platform_dev::frame_kind kind, uint32_t token);

// Sends without waiting; what the socket does not take is lost.
void send(int socket, const packet &sent);

// Makes the run-time directory, which lasts as long as the process.
void make_runtime_dir();

// A listening socket under this name in it.
int listen_in_runtime_dir(const char *name);

// A socket connected to that name.
int connect_in_runtime_dir(const char *name);

}  // namespace fuzz

#endif
