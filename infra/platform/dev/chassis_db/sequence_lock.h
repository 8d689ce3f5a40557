// SPDX-License-Identifier: Apache-2.0
// sequence_lock.h: one writer replaces words that many processes read without a lock.
//
// The writer makes the sequence odd, stores the words, and makes it even again. A reader that finds it odd, or changed
// behind its back, reads again. Every word is an atomic: its release store comes after the odd sequence, its acquire
// load before the second look at the sequence, so a reader that saw any word of an update sees the sequence of it.
#ifndef PLATFORM_DEV_CHASSIS_DB_SEQUENCE_LOCK_H
#define PLATFORM_DEV_CHASSIS_DB_SEQUENCE_LOCK_H

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <thread>

namespace platform_dev {

static_assert(std::atomic_ref<uint32_t>::is_always_lock_free);

// A word of the shared image; the readers' pages are read-only, so only loads reach through a const image.
inline std::atomic_ref<uint32_t> shared_word(const uint32_t &word) {
    return std::atomic_ref<uint32_t>(const_cast<uint32_t &>(word));
}

inline uint32_t load_word(const uint32_t &word) { return shared_word(word).load(std::memory_order_acquire); }

// Replaces `count` words at `to`. A sequence that a dead writer left odd becomes even, too.
inline void write_sequenced(uint32_t &sequence, uint32_t *to, const uint32_t *from, size_t count) {
    const uint32_t odd = shared_word(sequence).load(std::memory_order_relaxed) | 1;
    shared_word(sequence).store(odd, std::memory_order_relaxed);
    for (size_t i = 0; i < count; ++i) shared_word(to[i]).store(from[i], std::memory_order_release);
    shared_word(sequence).store(odd + 1, std::memory_order_release);
}

// An update takes some 20 microseconds, but its writer may lose the processor within one, for long on a busy machine. A
// reader waits this many times this long, most of a second, and then takes the writer for dead.
inline constexpr int read_attempts = 5000;
inline constexpr std::chrono::microseconds read_pause{100};

// Returns what `read` returns, an optional, from a state without an update in it; nothing when there was none in time.
// `read` may meet torn words: its result is thrown away then, but it must not trip over them.
template <typename Read>
auto read_sequenced(const uint32_t &sequence, Read read) -> decltype(read()) {
    for (int attempt = 0; attempt < read_attempts; ++attempt) {
        const uint32_t before = load_word(sequence);
        if (before % 2 == 0) {
            auto result = read();
            if (shared_word(sequence).load(std::memory_order_relaxed) == before) return result;
        }
        std::this_thread::sleep_for(read_pause);
    }
    return std::nullopt;
}

}  // namespace platform_dev

#endif
