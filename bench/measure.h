// SPDX-License-Identifier: Apache-2.0
// measure.h: times short pieces of work so that figures of one run can be compared.
#ifndef BENCH_MEASURE_H
#define BENCH_MEASURE_H

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace bench {

// Makes the compiler believe that the memory behind `pointer` is read and written here.
inline void touch(const void *pointer) {
    asm volatile("" : : "r"(pointer) : "memory");
}

inline double seconds_for(uint64_t times, auto &&work) {
    const auto start = std::chrono::steady_clock::now();
    for (uint64_t i = 0; i < times; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<long>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

// The median over `rounds` batches, each long enough (5 ms) for the clock, in nanoseconds a call.
inline double nanoseconds(auto &&work, int rounds = 15) {
    uint64_t times = 1;
    while (seconds_for(times, work) < 0.005)
        times *= 2;
    std::vector<double> batches;
    for (int i = 0; i < rounds; ++i) {
        batches.push_back(seconds_for(times, work) * 1e9 / static_cast<double>(times));
    }
    return median(std::move(batches));
}

inline void print_header(const char *unit) {
    std::printf("%-44s %12s %12s %8s   (%s)\n", "", "ours", "floor", "ratio", unit);
}

inline void print_row(const char *name, double ours, double floor) {
    std::printf("%-44s %12.2f %12.2f %8.2f\n", name, ours, floor, ours / floor);
}

}  // namespace bench

#endif
