// SPDX-License-Identifier: Apache-2.0
// measure.h: times pieces of work in one run, in turns.
#ifndef BENCH_SUPPORT_MEASURE_H
#define BENCH_SUPPORT_MEASURE_H

#include <sched.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
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

// A median over rounds, and half of the distance between the quartiles.
struct figure {
    double median;
    double spread;
};

inline figure summary_of(std::vector<double> samples) {
    std::sort(samples.begin(), samples.end());
    const auto at = [&](size_t quarter) { return samples[(samples.size() - 1) * quarter / 4]; };
    return {at(2), (at(3) - at(1)) / 2};
}

struct result {
    std::string name;
    figure took;
};

// Pieces of work that are compared. They take turns, so that what disturbs the machine meets all of them alike.
class contest {
  public:
    // `work` does `units` of what is compared in one call.
    template <typename Work>
    void add(std::string name, Work work, double units = 1) {
        const auto kept = std::make_shared<Work>(std::move(work));
        contenders_.push_back({std::move(name), units, [kept](uint64_t times) { return seconds_for(times, *kept); }});
    }

    // Returns nanoseconds a unit, in the order in which the contenders were added. A turn is as many calls as last
    // `turn_seconds`; with 0 it is one, so that all find the caches equally cold.
    [[nodiscard]] std::vector<result> run(int rounds = 21, double turn_seconds = 0.005) {
        for (contender &each : contenders_) each.calls = calls_in_a_turn(each, turn_seconds);
        for (int i = 0; i < rounds; ++i) {
            for (contender &each : contenders_) {
                const double seconds = each.seconds_for(each.calls);
                each.samples.push_back(seconds * 1e9 / (static_cast<double>(each.calls) * each.units));
            }
        }
        std::vector<result> results;
        for (contender &each : contenders_) results.push_back({each.name, summary_of(std::move(each.samples))});
        return results;
    }

  private:
    struct contender {
        std::string name;
        double units;
        std::function<double(uint64_t times)> seconds_for;
        uint64_t calls = 0;
        std::vector<double> samples{};
    };

    static uint64_t calls_in_a_turn(const contender &of, double turn_seconds) {
        uint64_t times = 1;
        while (of.seconds_for(times) < turn_seconds) times *= 2;
        return times;
    }

    std::vector<contender> contenders_;
};

}  // namespace bench

#endif
