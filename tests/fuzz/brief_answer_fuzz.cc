// SPDX-License-Identifier: Apache-2.0
// Answers of brief port records.
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/record_outputs.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const fuzz::message message(MTS_OPC_PM_GET_PORT_INFO_BRIEF, {data, size}, fuzz::no_tail);
    fuzz::check_records<pm_port_info_brief_t>(size, 51, fuzz::failed_outputs::as_they_were, [&](auto... outputs) {
        return pm_parse_get_port_info_brief(message.get(), outputs...);
    });
    return 0;
}
