// SPDX-License-Identifier: Apache-2.0
#include "bench/exchange/load.h"

#include <unistd.h>

#include <atomic>

#include "bench/exchange/bare_sockets.h"
#include "bench/exchange/ours.h"
#include "bench/exchange/peers.h"
#include "bench/support/histogram.h"
#include "bench/support/shared_object.h"

namespace bench {

namespace {

using clock_type = std::chrono::steady_clock;

constexpr size_t most_clients = 16;
constexpr int rounds = 7;
// A turn of all rivals takes no even part of a second: what disturbs once a second meets each of them in turn.
constexpr auto round_length = std::chrono::milliseconds(100);
constexpr double percentiles[] = {0.5, 0.9, 0.99, 0.999};

// What all processes see.
struct board {
    std::atomic<bool> go;
    std::atomic<bool> stop;
    std::array<histogram, most_clients> nanoseconds;  // of each client's exchanges
};

void ask_until_told(const rival &rival, const readiness &connected, board &all, histogram &nanoseconds) {
    const exchange ask = rival.connect();
    ask();
    connected.announce();
    while (!all.go) usleep(200);
    auto start = clock_type::now();
    while (!all.stop) {
        ask();
        const auto end = clock_type::now();
        nanoseconds.add(static_cast<uint64_t>(std::chrono::nanoseconds(end - start).count()));
        start = end;
    }
}

// The percentiles in microseconds, and the requests a second.
std::vector<double> run_once(const rival &rival, size_t clients) {
    const server_process server(rival.serve);
    const shared_object<board> all;
    std::vector<child_process> processes;
    for (size_t i = 0; i < clients; ++i) {
        readiness connected;
        processes.emplace_back([&] { ask_until_told(rival, connected, *all, all->nanoseconds[i]); });
        connected.wait();
    }
    const auto start = clock_type::now();
    all->go = true;
    usleep(std::chrono::microseconds(round_length).count());
    all->stop = true;
    for (child_process &process : processes) process.wait();
    const double seconds = std::chrono::duration<double>(clock_type::now() - start).count();

    histogram together;
    for (const histogram &each : all->nanoseconds) together.add(each);
    std::vector<double> figures;
    for (const double share : percentiles) figures.push_back(static_cast<double>(together.percentile(share)) / 1000);
    figures.push_back(static_cast<double>(together.total()) / seconds);
    return figures;
}

// One of the rivals, with the figures of each round.
struct contender {
    rival who;
    std::vector<std::vector<double>> taken{};

    [[nodiscard]] grid_row summary() const {
        grid_row row{who.name, {}};
        for (size_t column = 0; column < taken.front().size(); ++column) {
            std::vector<double> samples;
            for (const auto &round : taken) samples.push_back(round[column]);
            row.cells.push_back(summary_of(std::move(samples)));
        }
        return row;
    }
};

std::vector<contender> contenders(const std::string &directory) {
    const payload_sizes sizes = sizes_of(one_port);
    std::vector<contender> all = {{our_rival("query and parse", query_and_parse, one_port)},
                                  {bare_datagrams("bare datagram sockets", directory, sizes)}};
    if constexpr (has_peers) {
        all.push_back({sd_bus_peer(directory, sizes)});
        all.push_back({zeromq(directory, sizes)});
    }
    return all;
}

void measure(report &report, const std::string &directory, size_t clients) {
    std::vector<contender> all = contenders(directory);
    for (int round = 0; round < rounds; ++round)
        for (contender &each : all) each.taken.push_back(run_once(each.who, clients));
    std::vector<grid_row> rows;
    for (const contender &each : all) rows.push_back(each.summary());
    report.grid("one port, asked for by " + std::to_string(clients) + (clients == 1 ? " client" : " clients"),
                {"50 %, us", "90 %, us", "99 %, us", "99.9 %, us", "requests a second"}, rows);
}

}  // namespace

void measure_load(report &report, const std::string &directory) {
    for (const size_t clients : {size_t{1}, size_t{4}, most_clients}) measure(report, directory, clients);
}

}  // namespace bench
