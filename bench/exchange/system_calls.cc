// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/system_calls.h"

#include <sys/socket.h>

#include "bench/exchange/bare_sockets.h"
#include "bench/exchange/ours.h"
#include "bench/exchange/peers.h"
#include "bench/support/system_call_count.h"

namespace bench {

namespace {

// Of the service and of its client, from their start.
std::vector<uint64_t> calls_for(const rival &of, int exchanges) {
    readiness ready;
    return count_system_calls({[&] { of.serve(ready); },
                               [&] {
                                   ready.wait();
                                   const exchange ask = of.connect();
                                   for (int i = 0; i < exchanges; ++i) ask();
                               }});
}

grid_row calls_of_one_exchange(const rival &of) {
    constexpr int few = 100;
    constexpr int more = 300;
    const auto before = calls_for(of, few);
    const auto after = calls_for(of, more);
    const auto each = [&](size_t process) {
        return figure{static_cast<double>(after[process] - before[process]) / (more - few), 0};
    };
    return {of.name, {each(1), each(0)}};
}

}  // namespace

void count_system_calls(report &report, const std::string &directory) {
    const payload_sizes sizes = sizes_of(one_port);
    std::vector<rival> rivals = {our_rival("query and parse", query_and_parse, one_port),
                                 our_rival("get over CMI, parse included", get_over_cmi, one_port),
                                 our_rival("transport alone", transport_alone, one_port),
                                 bare_pair("bare datagram socket pair", SOCK_DGRAM, sizes)};
    if constexpr (has_peers) rivals.push_back(sd_bus_peer(directory, sizes));
    std::vector<grid_row> rows;
    for (const rival &each : rivals) rows.push_back(calls_of_one_exchange(each));
    report.grid("system calls of one exchange", {"client", "service"}, rows);
}

}  // namespace bench
