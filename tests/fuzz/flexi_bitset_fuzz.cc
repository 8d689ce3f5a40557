// SPDX-License-Identifier: Apache-2.0
// Sets of VSANs of any extent: four bytes of the first VSAN, then the bits.
#include <cstring>
#include <memory>

#include "port_mgr/vsan_bitset.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    if (size < 4) return 0;
    const auto length = static_cast<uint32_t>(size - 4);
    const auto block = std::make_unique<uint8_t[]>(sizeof(flexi_bitset_t) + length);
    auto *const flexi = reinterpret_cast<flexi_bitset_t *>(block.get());
    std::memcpy(&flexi->start, data, 4);
    flexi->length = length;
    std::memcpy(block.get() + sizeof(flexi_bitset_t), data + 4, length);
    vsan_bitset_t vsans;
    FUZZ_REQUIRE(pm_create_vsan_bitset_from_pm_flexi_bitset(flexi, &vsans) == 0);
    FUZZ_REQUIRE(vsans.size == 512);
    for (uint32_t vsan = 0; vsan < 4096; ++vsan) {
        const uint64_t bit = uint64_t{vsan} - flexi->start;
        const bool expected = vsan >= flexi->start && bit < uint64_t{8} * length &&
                              (block[sizeof(flexi_bitset_t) + bit / 8] >> (7 - bit % 8) & 1) != 0;
        FUZZ_REQUIRE((bitset_is_bit_set(&vsans, vsan) != 0) == expected);
    }
    return 0;
}
