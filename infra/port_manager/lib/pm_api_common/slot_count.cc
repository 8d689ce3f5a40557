// SPDX-License-Identifier: Apache-2.0
#include "pm_api_common/slot_count.h"

#include <atomic>
#include <cstddef>

#include "platform/pdb.h"

namespace pm {
namespace {

constexpr uint8_t fallback_slots = 9;
constexpr size_t slot_count_offset = 2;

constexpr uint32_t unknown = UINT32_MAX;
std::atomic<uint32_t> known_slots{unknown};

}  // namespace

uint8_t slot_count() {
    const uint32_t known = known_slots.load(std::memory_order_relaxed);
    if (known != unknown) return static_cast<uint8_t>(known);
    platform_info_t info{};
    if (get_platform_info(&info) < 0) return fallback_slots;
    known_slots.store(info.byte[slot_count_offset], std::memory_order_relaxed);
    return info.byte[slot_count_offset];
}

}  // namespace pm
