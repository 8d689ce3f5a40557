// SPDX-License-Identifier: Apache-2.0
// measure.h: times pieces of work beside a floor under them, in one run.
#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <sched.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace bench {

// Says what failed and ends the program, unless `succeeded`.
inline void require(bool succeeded, const char *what) {
    if (succeeded) return;
    std::perror(what);
    std::exit(EXIT_FAILURE);
}

// Keeps the process, and those it forks from now on, on one core: waking another one costs more than what is measured.
inline void pin_to_one_core() {
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(static_cast<size_t>(sched_getcpu()), &cores);
    require(sched_setaffinity(0, sizeof cores, &cores) == 0, "sched_setaffinity");
}

// Makes the compiler believe that the memory behind `pointer` is read and written here.
inline void touch(const void *pointer) { asm volatile("" : : "r"(pointer) : "memory"); }

// How long `times` calls take together.
inline double seconds_for(uint64_t times, auto &work) {
    const auto start = std::chrono::steady_clock::now();
    for (uint64_t i = 0; i < times; ++i) work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// How many calls last long enough for the clock.
inline uint64_t calls_in_a_batch(auto &work) {
    constexpr double long_enough = 0.005;
    uint64_t times = 1;
    while (seconds_for(times, work) < long_enough) times *= 2;
    return times;
}

inline double median(std::vector<double> figures) {
    const auto middle = figures.begin() + static_cast<std::ptrdiff_t>(figures.size() / 2);
    std::nth_element(figures.begin(), middle, figures.end());
    return *middle;
}

// One call of some work, and of the floor under it, in nanoseconds.
struct comparison {
    double ours;
    double floor;

    [[nodiscard]] double ratio() const { return ours / floor; }
};

// Measures both in turns, so that what disturbs the machine meets both alike, and takes the medians of the rounds.
inline comparison compare(auto &&ours, auto &&floor, int rounds = 21) {
    const uint64_t our_calls = calls_in_a_batch(ours);
    const uint64_t floor_calls = calls_in_a_batch(floor);
    std::vector<double> our_batches;
    std::vector<double> floor_batches;
    for (int i = 0; i < rounds; ++i) {
        our_batches.push_back(seconds_for(our_calls, ours) * 1e9 / static_cast<double>(our_calls));
        floor_batches.push_back(seconds_for(floor_calls, floor) * 1e9 / static_cast<double>(floor_calls));
    }
    return {median(our_batches), median(floor_batches)};
}

inline void print_heading() { std::printf("%-58s %12s %12s %8s\n", "", "ours (ns)", "floor (ns)", "ratio"); }

inline void print_row(const char *name, const comparison &row) {
    std::printf("%-58s %12.2f %12.2f %8.2f\n", name, row.ours, row.floor, row.ratio());
}

}  // namespace bench

#endif
