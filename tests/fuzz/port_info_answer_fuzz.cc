// SPDX-License-Identifier: Apache-2.0
// Answers of full port records, with the elements behind them.
#include "port_mgr/port_mgr_common.h"
#include "support/answers.h"
#include "support/record_outputs.h"

namespace {

constexpr size_t record_size = 189;
constexpr pm_if_index_range_t first_port{0x01000000, 0x01000000};

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const fuzz::bytes payload(data, size);
    if (fuzz::takes_long(payload, record_size)) return 0;
    using fuzz::failed_outputs;
    {
        const fuzz::message message(MTS_OPC_PM_GET_PORT_INFO, payload, fuzz::element_tail);
        fuzz::check_records<pm_port_info_t>(size, record_size, failed_outputs::as_they_were, [&](auto... outputs) {
            return pm_parse_get_port_info(message.get(), outputs...);
        });
    }
    fuzz::answer_with(payload, fuzz::element_tail);
    fuzz::check_records<pm_port_info_t>(size, record_size, failed_outputs::empty, [](auto... outputs) {
        return pm_cmi_get_port_config(1, 3, 1, &first_port, outputs..., 0);
    });
    fuzz::check_records<pm_port_info_t>(size, record_size, failed_outputs::as_they_were, [](auto... outputs) {
        return pm_cmi_get_module_interface_listing(1, 1, first_port.first, 0, outputs...);
    });
    FUZZ_REQUIRE(fuzz::live_messages() == 0);
    return 0;
}
