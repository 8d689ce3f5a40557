// SPDX-License-Identifier: Apache-2.0
#include "services/transceiver_service.h"

#include <algorithm>

#include "platform/if_index.h"
#include "port_mgr/status.h"
#include "protocol/request_layout.h"
#include "protocol/transceiver_layout.h"
#include "services/port_selection.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

// Selects the ports that a request asks for. Returns 0, or the status of the refusal.
uint32_t read_request(const chassis_model &model, const mts_request_t &request, pm::fcot_flavour &flavour,
                      port_list &ports) {
    pm::byte_reader reader(payload_of(request));
    const uint32_t count = reader.get_be32();
    flavour = static_cast<pm::fcot_flavour>(reader.get_be32());
    const bool fits = reader.ok() && uint64_t{count} * pm::wire_range_size == reader.rest().size();
    const bool is_known = flavour == pm::fcot_flavour::plain || flavour == pm::fcot_flavour::with_diagnostics;
    if (!fits || count == 0 || !is_known) return PM_ERR_INVALID_PARAM;
    pm::byte_reader first_range = reader;
    if (model.owner_sap(read_range(first_range).first) != request.sap) return PM_ERR_REJECTED;
    const uint32_t status = select_ranges(model, reader, count, ports);
    if (status != 0) return status;
    std::erase_if(ports, [](const port *at) { return !takes_transceiver.contains(at->kind); });
    return ports.empty() ? PM_ERR_REJECTED : 0;
}

pm_fcot_info_t record_of(const switch_state &state, const port &at, pm::fcot_flavour flavour) {
    pm_fcot_info_t record{};
    record.if_index = at.info.if_index;
    const transceiver *const found = state.model().plugged_into(at.info.if_index);
    if (found == nullptr) return record;
    record.flags = PM_FCOT_PRESENT;
    std::ranges::copy(found->serial_id, record.serial_id);
    if (flavour == pm::fcot_flavour::plain || !found->has_diagnostics) return record;
    record.flags |= PM_FCOT_DIAGNOSTICS;
    record.layout = PM_FCOT_LAYOUT_A;
    std::ranges::copy(diagnostics_at(*found, at.info.if_index, at.link(), state.now()), record.diagnostics);
    return record;
}

}  // namespace

void serve_transceivers(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    pm::fcot_flavour flavour{};
    port_list ports;
    const uint32_t status = read_request(state.model(), request, flavour, ports);
    if (status != 0) return answer_status(reply, status);
    uint8_t *to = start_answer(reply, ports.size(), ports.size() * sizeof(pm_fcot_info_t));
    if (to == nullptr) return;
    for (const port *const at : ports) {
        const pm_fcot_info_t record = record_of(state, *at, flavour);
        pm::store(to, record);
        pm::encode_record<pm::fcot_fields>(&record, to, hton_if_index);
        to += sizeof record;
    }
}

}  // namespace virtual_switch
