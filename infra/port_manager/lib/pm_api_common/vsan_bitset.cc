// SPDX-License-Identifier: Apache-2.0
#include "port_mgr/vsan_bitset.h"

namespace {

constexpr uint64_t last_vsan = 4095;

bool is_set(const flexi_bitset_t &flexi, uint64_t bit) { return (flexi.bits[bit / 8] >> (7 - bit % 8) & 1) != 0; }

}  // namespace

uint32_t pm_create_vsan_bitset_from_pm_flexi_bitset(const flexi_bitset_t *flexi, vsan_bitset_t *vsans) {
    vsans->size = sizeof vsans->bits;
    bitset_clear(vsans);
    const uint64_t end = flexi->start + uint64_t{8} * flexi->length;
    for (uint64_t vsan = flexi->start; vsan < end && vsan <= last_vsan; ++vsan) {
        if (is_set(*flexi, vsan - flexi->start)) bitset_set_bit(vsans, static_cast<uint32_t>(vsan));
    }
    return 0;
}
