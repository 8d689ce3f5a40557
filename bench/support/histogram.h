// SPDX-License-Identifier: Apache-2.0
// histogram.h: how long things took: the number of those of each length, in steps of a thirty-second of their size.
#ifndef BENCH_SUPPORT_HISTOGRAM_H
#define BENCH_SUPPORT_HISTOGRAM_H

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstdint>

namespace bench {

// Lengths in any unit. One process writes; others that share the memory can read.
class histogram {
  public:
    void add(uint64_t length) {
        ++counts_[bucket_of(length)];
        longest_ = std::max(longest_.load(), length);
    }

    void add(const histogram &other) {
        for (size_t i = 0; i < counts_.size(); ++i) counts_[i] += other.counts_[i];
        longest_ = std::max(longest_.load(), other.longest_.load());
    }

    [[nodiscard]] uint64_t total() const {
        uint64_t sum = 0;
        for (const auto &count : counts_) sum += count;
        return sum;
    }

    // The length that this share of all did not exceed, to a step.
    [[nodiscard]] uint64_t percentile(double share) const {
        const auto wanted = static_cast<uint64_t>(share * static_cast<double>(total()));
        uint64_t seen = 0;
        for (size_t i = 0; i < counts_.size(); ++i) {
            seen += counts_[i];
            if (seen > wanted) return end_of(i);
        }
        return longest_;
    }

    [[nodiscard]] uint64_t longest() const { return longest_; }

  private:
    static constexpr unsigned step_bits = 5;
    static constexpr uint64_t steps = 1 << step_bits;

    static size_t bucket_of(uint64_t length) {
        if (length < steps) return static_cast<size_t>(length);
        const auto power = static_cast<unsigned>(std::bit_width(length)) - 1 - step_bits;
        return static_cast<size_t>((power << step_bits) + (length >> power));
    }

    static uint64_t end_of(size_t index) {
        if (index < steps) return index;
        const uint64_t power = (index >> step_bits) - 1;
        return ((index - (power << step_bits) + 1) << power) - 1;
    }

    std::array<std::atomic<uint64_t>, (64 - step_bits + 1) * steps> counts_{};
    std::atomic<uint64_t> longest_ = 0;
};

}  // namespace bench

#endif
