// SPDX-License-Identifier: Apache-2.0
// Answers of line cards about counters of an Ethernet port.
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::answer_with({data, size}, fuzz::no_tail);
    constexpr if_index_t port = 0x02000000;
    pm_eth_stats_t stats{};
    const int32_t status = pm_get_clear_eth_stats(1, port, port, 0, &stats);
    FUZZ_REQUIRE(size == sizeof stats || status != 0 || stats.result == 0);
    FUZZ_REQUIRE(fuzz::live_messages() == 0);
    return 0;
}
