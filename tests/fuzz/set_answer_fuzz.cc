// SPDX-License-Identifier: Apache-2.0
// Answers to set requests, of one service and of the two that are asked for a port channel.
#include <array>

#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/record_outputs.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr std::array<if_index_t, 2> interfaces{0x01000000, 0x04001000};  // a port and a port channel
    constexpr uint8_t up = 1;
    fuzz::answer_with({data, size}, fuzz::no_tail);
    for (const if_index_t interface : interfaces) {
        const pm_if_index_range_t range{interface, interface};
        uint32_t count = 0x5a5a5a5a;
        pm_set_port_result_t *entries = nullptr;
        const uint32_t status =
            pm_cmi_set_port_config(1, nullptr, nullptr, 1, &range, PM_ATTR_ADMIN_STATE, 1, &up, &count, &entries, 0);
        FUZZ_REQUIRE(status != 0 || entries != nullptr);
        if (entries == nullptr) continue;
        FUZZ_REQUIRE(8 + uint64_t{count} * sizeof *entries <= size);
        fuzz::touch(entries, count);
        std::free(entries);
    }
    return 0;
}
