// SPDX-License-Identifier: Apache-2.0
// bare_sockets.h: the floor: the same number of bytes there and back over sockets of the same host, and nothing else.
#ifndef BENCH_EXCHANGE_BARE_SOCKETS_H
#define BENCH_EXCHANGE_BARE_SOCKETS_H

#include <sys/socket.h>

#include "bench/exchange/rival.h"

namespace bench {

// One client, over a pair of sockets of this type: SOCK_DGRAM, SOCK_SEQPACKET or SOCK_STREAM. It connects once.
rival bare_pair(std::string name, int socket_type, payload_sizes sizes);

// Any number of clients: a datagram socket in `directory`, and one for each client, to which it answers.
rival bare_datagrams(std::string name, const std::string &directory, payload_sizes sizes);

}  // namespace bench

#endif
