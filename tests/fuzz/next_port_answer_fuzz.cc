// SPDX-License-Identifier: Apache-2.0
// Answers that walk from port to port: one full record, with elements behind it.
#include "platform/tlv_array.h"
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/record_outputs.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    constexpr size_t record_size = 189;
    constexpr size_t end = 8 + record_size;
    const fuzz::bytes payload(data, size);
    if (size >= end + 12 && tlv_array_get_num_tlvs(data + end, 1) > 20000) return 0;
    const fuzz::message message(MTS_OPC_PM_GET_NEXT_PORT_INFO, payload, fuzz::element_tail);
    uint32_t count = 0x5a5a5a5a;
    pm_port_info_t *record = nullptr;
    const uint32_t status = pm_parse_get_next_port_info(message.get(), &count, &record);
    FUZZ_REQUIRE((status == 0) == (record != nullptr));
    FUZZ_REQUIRE(status != 0 || size >= end);
    FUZZ_REQUIRE(status == 0 || count == 0x5a5a5a5a);
    if (record != nullptr) fuzz::touch(record, 1);
    std::free(record);
    return 0;
}
