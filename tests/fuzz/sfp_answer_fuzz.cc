// SPDX-License-Identifier: Apache-2.0
// Answers of line cards about the readings of a transceiver, with the elements behind them.
#include "platform/tlv_array.h"
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr size_t end = 4 + sizeof(pm_sfp_diag_info_t);
    if (size >= end + 12 && tlv_aligned_array_get_num_tlvs(data + end, 1) > 20000) return 0;
    fuzz::answer_with({data, size}, fuzz::element_tail);
    pm_sfp_diag_info_t info;
    pm_sfp_diag_extra_t extra{};
    const uint32_t status = pm_get_sfp_diag_info(1, 0x01000000, &info, &extra);
    FUZZ_REQUIRE(status != 0 || size >= end);
    FUZZ_REQUIRE(size >= end || info.status == 0);
    FUZZ_REQUIRE(status == 0 || (extra.alarms == 0 && extra.warnings == 0 && extra.age == 0));
    FUZZ_REQUIRE(fuzz::live_messages() == 0);
    return 0;
}
