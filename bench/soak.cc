// SPDX-License-Identifier: Apache-2.0
// soak.cc: many client processes that ask and configure one virtual switch for a while. Nothing may fail, and neither
// side may grow.
//
// Usage: bench_soak [--seconds N]. Exit status 0; 1 when a request failed or a process grew; 2 for wrong usage.
#include <malloc.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "bench/support/child_process.h"
#include "bench/support/histogram.h"
#include "bench/support/measure.h"
#include "bench/support/shared_object.h"
#include "bench/support/temporary_runtime_dir.h"
#include "bench/support/virtual_switch.h"
#include "platform_dev/mts_dev.h"
#include "tests/integration/faults/exchange_calls.h"

namespace {

using bench::child_process;
using bench::require;
using clock_type = std::chrono::steady_clock;

constexpr size_t client_count = 64;
constexpr size_t configuring_clients = 8;

// How much may be held at the end that was not at the start: by the switch, which is not asked to give any back, what
// the largest answers took, a few at once; by each client, some pages of the buffers that its transport keeps.
constexpr long allowed_to_switch = 512;
constexpr long allowed_to_clients = 32 * client_count;

// What a process holds.
struct holdings {
    long kilobytes;  // resident, without what it shares with files
    long descriptors;
};

long anonymous_kilobytes(pid_t pid) {
    std::ifstream status("/proc/" + std::to_string(pid) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("RssAnon:")) return std::strtol(line.c_str() + std::strlen("RssAnon:"), nullptr, 10);
    }
    return -1;
}

holdings holdings_of(pid_t pid) {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(pid) + "/fd");
    return {anonymous_kilobytes(pid), static_cast<long>(std::distance(begin(all), end(all)))};
}

// What all processes see.
struct board {
    std::atomic<bool> hold;    // clients make no calls
    std::atomic<size_t> idle;  // clients that keep to that
    std::atomic<bool> stop;
    struct client {
        bench::histogram round_trips;  // in microseconds
        std::atomic<uint64_t> requests;
        std::atomic<uint64_t> failed;
    };
    std::array<client, client_count> clients;
};

// The calls of a client, which ask again and again: all that read, and of some clients those that configure, too.
std::vector<exchange_call> calls_of(size_t client) {
    std::vector<exchange_call> calls;
    for (const exchange_call &call : exchange_calls()) {
        if (!call.configures || client < configuring_clients) calls.push_back(call);
    }
    return calls;
}

// Makes one call and notes how it went.
void make(const exchange_call &call, mts_handle_t handle, board::client &own) {
    const auto start = clock_type::now();
    const uint32_t status = call.run(handle);
    const auto took = std::chrono::duration_cast<std::chrono::microseconds>(clock_type::now() - start);
    own.round_trips.add(static_cast<uint64_t>(took.count()));
    ++own.requests;
    if (status == 0) return;
    if (own.failed++ == 0) std::fprintf(stderr, "%s: status 0x%x\n", call.name, status);
}

// Gives back what the allocator keeps for the next call, so that what is still held then is held on to.
void stay_idle(board &all) {
    malloc_trim(0);
    ++all.idle;
    while (all.hold) usleep(1000);
    --all.idle;
}

void ask_until_told(board &all, size_t number) {
    std::minstd_rand random(static_cast<uint32_t>(number) + 1);
    const std::vector<exchange_call> calls = calls_of(number);
    const mts_handle_t handle = mts_dev_open();
    require(handle != 0, "mts_dev_open");
    for (const exchange_call &call : calls) make(call, handle, all.clients[number]);
    while (!all.stop) {
        if (all.hold) stay_idle(all);
        make(calls[random() / 7 % calls.size()], handle, all.clients[number]);
    }
    mts_dev_close(handle);
}

struct verdict {
    const char *who;
    long allowed_kilobytes;
    holdings start;
    holdings end;

    [[nodiscard]] bool is_flat() const {
        return end.descriptors <= start.descriptors && end.kilobytes <= start.kilobytes + allowed_kilobytes;
    }
    void print() const {
        std::printf("%-22s %7ld kB, %4ld descriptors at the start; %7ld kB, %4ld descriptors at the end: %s\n", who,
                    start.kilobytes, start.descriptors, end.kilobytes, end.descriptors, is_flat() ? "flat" : "GROWN");
    }
};

struct all_holdings {
    holdings daemon;
    std::vector<holdings> clients;
};

// Waits until every client is idle: it has made each of its calls by then, so that every connection is open.
all_holdings take_holdings(const child_process &daemon, const std::vector<child_process> &clients, board &all) {
    all.hold = true;
    while (all.idle < client_count) usleep(1000);
    all_holdings taken{holdings_of(daemon.pid()), {}};
    for (const child_process &client : clients) taken.clients.push_back(holdings_of(client.pid()));
    all.hold = false;
    while (all.idle > 0) usleep(1000);
    return taken;
}

// All clients together: of which pages a buffer that one keeps is made is chance.
holdings sum_of(const std::vector<holdings> &clients) {
    holdings sum{};
    for (const holdings &client : clients) {
        sum.kilobytes += client.kilobytes;
        sum.descriptors += client.descriptors;
    }
    return sum;
}

// Prints what the clients met. Returns whether all went well.
bool report_requests(const board &all, double seconds) {
    bench::histogram round_trips;
    uint64_t requests = 0;
    uint64_t failed = 0;
    for (const board::client &client : all.clients) {
        round_trips.add(client.round_trips);
        requests += client.requests;
        failed += client.failed;
    }
    std::printf("%zu clients, %zu of them configure; %.1f s\n", client_count, configuring_clients, seconds);
    std::printf("%-22s %" PRIu64 " made, %.0f a second, %" PRIu64 " failed\n", "requests", requests,
                static_cast<double>(requests) / seconds, failed);
    std::printf("%-22s median %" PRIu64 " us, 99 %% %" PRIu64 " us, 99.9 %% %" PRIu64 " us, longest %" PRIu64 " us\n",
                "round trips", round_trips.percentile(0.5), round_trips.percentile(0.99), round_trips.percentile(0.999),
                round_trips.longest());
    return failed == 0 && requests > 0;
}

int soak(unsigned seconds) {
    const bench::temporary_runtime_dir directory;
    const bench::shared_object<board> shared;
    board &all = *shared;
    const child_process daemon = bench::start_virtual_switch(PM_VIRTUAL_SWITCH, CHASSIS);
    std::vector<child_process> clients;
    const auto start = clock_type::now();
    for (size_t i = 0; i < client_count; ++i) clients.emplace_back([&all, i] { ask_until_told(all, i); });

    const all_holdings before = take_holdings(daemon, clients, all);
    sleep(seconds);
    const all_holdings after = take_holdings(daemon, clients, all);
    all.stop = true;
    for (child_process &client : clients) client.wait();

    const bool all_answered = report_requests(all, std::chrono::duration<double>(clock_type::now() - start).count());
    const verdict switch_verdict{"switch", allowed_to_switch, before.daemon, after.daemon};
    const verdict client_verdict{"clients together", allowed_to_clients, sum_of(before.clients), sum_of(after.clients)};
    switch_verdict.print();
    client_verdict.print();
    return all_answered && switch_verdict.is_flat() && client_verdict.is_flat() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int main(int argc, char **argv) {
    unsigned seconds = 30;
    const bool has_seconds = argc == 3 && std::strcmp(argv[1], "--seconds") == 0;
    if (has_seconds) std::from_chars(argv[2], argv[2] + std::strlen(argv[2]), seconds);
    if ((argc > 1 && !has_seconds) || seconds < 1) {
        std::fprintf(stderr, "usage: %s [--seconds N]\n", argv[0]);
        return 2;
    }
    return soak(seconds);
}
