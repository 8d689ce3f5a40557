// SPDX-License-Identifier: Apache-2.0
// peers.h: other ways in which programs of one host ask each other, each used as its documents advise.
#ifndef BENCH_EXCHANGE_PEERS_H
#define BENCH_EXCHANGE_PEERS_H

#include <vector>

#include "bench/exchange/rival.h"

namespace bench {

// Debian has their libraries in the machine's own width alone: nothing below is there in 32 bits.
inline constexpr bool has_peers = sizeof(void *) == 8;

// A D-Bus method that takes an array of bytes and returns another one, called over a connection of the two processes.
rival sd_bus_peer(const std::string &directory, payload_sizes sizes);

// The same called over a message bus of its own: a dbus-daemon that hands every message on.
rival sd_bus_daemon(const std::string &directory, payload_sizes sizes);

// A REQ socket and a REP socket over ipc.
rival zeromq(const std::string &directory, payload_sizes sizes);

// Asks the kernel for the link "lo": sizes are what they are, and no other process takes part.
rival netlink_link_query();

}  // namespace bench

#endif
