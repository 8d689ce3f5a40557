// SPDX-License-Identifier: Apache-2.0
// The element that carries a configuration attribute.
#include <algorithm>
#include <array>
#include <cstring>

#include "port_mgr/config_attribute.h"
#include "protocol/config_value_kinds.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    pm_cfg_tlv_t element{};
    std::memcpy(&element, data, std::min(size, sizeof element));
    uint8_t type = 0;
    uint8_t length = 0;
    std::array<uint8_t, PM_CFG_VALUE_SIZE> value{};
    if (pm_decode_tlv(&element, &type, &length, value.data()) != 0) return 0;
    FUZZ_REQUIRE(type == element.type && length == element.length);
    const size_t width = pm::width_of(pm::read_kind(type));
    FUZZ_REQUIRE(std::all_of(value.begin() + static_cast<std::ptrdiff_t>(width), value.end(),
                             [](uint8_t byte) { return byte == 0; }));

    // Encoding what was decoded gives the same element.
    pm_cfg_tlv_t again{};
    FUZZ_REQUIRE(pm_encode_tlv(&again, type, length, value.data()) == 0);
    FUZZ_REQUIRE(std::memcmp(&again, &element, 2 + width) == 0);
    return 0;
}
