// SPDX-License-Identifier: Apache-2.0
// sd_bus_method.h: a D-Bus method that takes an array of bytes and returns another one.
#ifndef BENCH_EXCHANGE_SD_BUS_METHOD_H
#define BENCH_EXCHANGE_SD_BUS_METHOD_H

#include <systemd/sd-bus.h>

#include <memory>
#include <vector>

#include "bench/exchange/rival.h"

namespace bench {

struct bus_closer {
    void operator()(sd_bus *bus) const { sd_bus_close_unref(bus); }
};
using bus_owner = std::unique_ptr<sd_bus, bus_closer>;

// As bench::require, for the results of sd-bus.
inline void require_bus(int result, const char *what) {
    if (result < 0) errno = -result;
    require(result >= 0, what);
}

bus_owner new_bus();

// Connects to the socket of a message bus or of a peer.
bus_owner connect_bus(const std::string &path, bool is_message_bus);

// Makes the bus answer calls with `*answer`, which outlives it.
void add_method(sd_bus *bus, const std::vector<char> *answer);

// Handles what has arrived. Returns false when the connection has ended.
bool process_all(sd_bus *bus);

// Calls the method, of the service with this name on a message bus, else null.
exchange calling(bus_owner bus, const char *service_name, payload_sizes sizes);

}  // namespace bench

#endif
