// SPDX-License-Identifier: Apache-2.0
// The answer about the system's defaults. Its parser is told no size and reads 18 bytes: shorter answers are filled up.
#include <algorithm>
#include <array>
#include <cstring>

#include "port_mgr/port_mgr_common.h"
#include "support/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    std::array<uint8_t, 4 + sizeof(pm_system_default_config_t)> payload{};
    std::copy_n(data, std::min(size, payload.size()), payload.begin());
    pm_system_default_config_t record;
    const uint32_t status = pm_parse_cmi_system_default_config_res_payload(payload.data(), &record);
    FUZZ_REQUIRE(std::memcmp(&record, &payload[4], sizeof record) == 0);
    FUZZ_REQUIRE(status ==
                 (uint32_t{payload[0]} << 24 | uint32_t{payload[1]} << 16 | uint32_t{payload[2]} << 8 | payload[3]));
    return 0;
}
