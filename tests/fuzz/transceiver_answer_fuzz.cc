// SPDX-License-Identifier: Apache-2.0
// Answers of transceiver records, over CMI and as messages.
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/record_outputs.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr size_t record_size = sizeof(pm_fcot_info_t);
    constexpr size_t message_header_size = 112;
    constexpr pm_if_index_range_t range{0x01000000, 0x01000000};
    using fuzz::failed_outputs;
    fuzz::answer_with({data, size}, fuzz::no_tail);
    fuzz::check_records<pm_fcot_info_t>(size, record_size, failed_outputs::empty, [&](auto... outputs) {
        return pm_cmi_get_fcot_info(1, 3, 1, &range, outputs..., 0);
    });

    // The status of this one is the service's own, also when its records are malformed.
    uint32_t count = 0;
    pm_fcot_info_t *records = nullptr;
    pm_get_next_port_fcot_info_with_ddm(1, 3, 1, &range, &count, &records, 0);
    FUZZ_REQUIRE(records != nullptr || count == 0);
    FUZZ_REQUIRE(records == nullptr || 8 + uint64_t{count} * record_size <= size);
    fuzz::touch(records, count);
    std::free(records);

    const fuzz::message message(CMI_OPC_PM_GET_FCOT_INFO, {data, size}, fuzz::no_tail);
    const size_t rest = size < message_header_size ? 0 : size - message_header_size;
    fuzz::check_records<pm_fcot_info_t>(rest, record_size, failed_outputs::as_they_were,
                                        [&](auto... outputs) { return pm_parse_fcot_info(message.get(), outputs...); });
    return 0;
}
