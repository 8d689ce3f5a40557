// SPDX-License-Identifier: Apache-2.0
// Answers to requests that create and delete sub-interfaces.
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::answer_with({data, size}, fuzz::no_tail);
    pm_snmp_sub_intf_t record{};
    record.main = 0x02000000;
    const uint32_t status = pm_snmp_config_sub_interface(1, &record, 0);
    const uint32_t sent = pm_cmi_config_sub_interface(1, &record, sizeof record, 0);
    FUZZ_REQUIRE(sent != 0 || size >= 8);
    FUZZ_REQUIRE(status == sent);
    return 0;
}
