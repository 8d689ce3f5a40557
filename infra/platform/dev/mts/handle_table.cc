// SPDX-License-Identifier: Apache-2.0
#include "mts/handle_table.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <mutex>

namespace platform_dev {

namespace {

// A handle is its slot's index in the low bits and, above them, how often the slot was opened, so that the number of a
// closed handle does not come back soon.
constexpr uint32_t index_bits = 12;
constexpr uint32_t slot_count = 1u << index_bits;
constexpr uint32_t max_generation = UINT32_MAX >> index_bits;

struct slot {
    std::atomic<mts_handle_t> open{0};  // the handle while it is open, else 0
    message_queue *queue = nullptr;     // valid while `open` holds a handle
    uint32_t generation = 0;            // from 1 on once it was opened
};

constinit std::array<slot, slot_count> slots;
constinit std::mutex table_lock;

slot &slot_of(mts_handle_t handle) { return slots[handle % slot_count]; }

mts_handle_t next_handle(slot &free_slot) {
    const auto index = static_cast<uint32_t>(&free_slot - slots.data());
    free_slot.generation = free_slot.generation % max_generation + 1;
    return free_slot.generation << index_bits | index;
}

}  // namespace

mts_handle_t open_handle(std::unique_ptr<message_queue> queue) {
    const std::lock_guard guard(table_lock);
    for (slot &candidate : slots) {
        if (candidate.open.load(std::memory_order_relaxed) != 0) continue;
        candidate.queue = queue.release();
        const mts_handle_t handle = next_handle(candidate);
        candidate.open.store(handle, std::memory_order_release);
        return handle;
    }
    errno = EMFILE;
    return 0;
}

std::unique_ptr<message_queue> close_handle(mts_handle_t handle) {
    const std::lock_guard guard(table_lock);
    slot &closed = slot_of(handle);
    if (handle == 0 || closed.open.load(std::memory_order_relaxed) != handle) return nullptr;
    closed.open.store(0, std::memory_order_relaxed);
    return std::unique_ptr<message_queue>(closed.queue);
}

message_queue *find_queue(mts_handle_t handle) {
    const slot &found = slot_of(handle);
    return handle != 0 && found.open.load(std::memory_order_acquire) == handle ? found.queue : nullptr;
}

}  // namespace platform_dev
