// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/vsan_bitset.h"

#include <algorithm>

namespace {

constexpr uint64_t vsan_count = 4096;

bool is_set(const flexi_bitset_t &flexi, uint64_t bit) { return (flexi.bits[bit / 8] >> (7 - bit % 8) & 1) != 0; }

}  // namespace

uint32_t pm_create_vsan_bitset_from_pm_flexi_bitset(const flexi_bitset_t *flexi, vsan_bitset_t *vsans) {
    vsans->size = sizeof vsans->bits;
    bitset_clear(vsans);
    const uint64_t end = std::min(flexi->start + uint64_t{8} * flexi->length, vsan_count);
    for (uint64_t vsan = flexi->start; vsan < end; ++vsan) {
        if (is_set(*flexi, vsan - flexi->start)) bitset_set_bit(vsans, static_cast<uint32_t>(vsan));
    }
    return 0;
}
