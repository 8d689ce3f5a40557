// SPDX-License-Identifier: Apache-2.0
#include "services/set_service.h"

#include "chassis/config_attributes.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "services/port_selection.h"
#include "services/request_payload.h"
#include "services/set_request.h"

namespace virtual_switch {
namespace {

bool sets(const chassis_model &model, if_index_t if_index, uint32_t sap) {
    if (is_port_channel(if_index)) return sap == PM_SAP_PORT_MANAGER || sap == PM_SAP_ETHERNET_CHANNEL;
    return model.owner_sap(if_index) == sap;
}

// What a request does to one port: 0, or the status of the refusal.
uint32_t judge(const port &at, const set_request &request) {
    const config_attribute *const attribute = find_attribute(request.attribute);
    if (attribute == nullptr || !has_attribute(at.kind, *attribute)) return PM_ERR_REJECTED;
    return is_good(*attribute->setting, request.value) ? 0 : PM_ERR_INVALID_PARAM;
}

// One result for each interface, in order of the ranges. A range that names none has one for its first interface.
std::vector<set_result> judge_all(const chassis_model &model, const set_request &request, uint32_t sap) {
    std::vector<set_result> results;
    for (const pm_if_index_range_t &range : request.ranges) {
        const auto ports = ports_in(model, range);
        if (ports.empty()) results.push_back({range.first, PM_ERR_INVALID_RANGE});
        for (const auto &[if_index, at] : ports) {
            results.push_back({if_index, sets(model, if_index, sap) ? judge(at, request) : PM_ERR_REJECTED});
        }
        if (results.size() > most_set_results) break;
    }
    return results;
}

bool set_all(switch_state &state, const set_request &request, const std::vector<set_result> &results) {
    configuration changes = state.changes();
    for (const set_result &result : results) {
        if (result.status == 0) changes.settings[result.if_index][request.attribute] = request.value;
    }
    return state.change(std::move(changes));
}

}  // namespace

void serve_set(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    set_request asked{};
    const uint32_t status = read_set_request(payload_of(request), asked);
    if (status != 0) return refuse_set(reply, status);
    std::vector<set_result> results = judge_all(state.model(), asked, request.sap);
    if (results.size() > most_set_results) return refuse_set(reply, PM_ERR_FAILURE);
    if (!set_all(state, asked, results)) {
        for (set_result &result : results) {
            if (result.status == 0) result.status = PM_ERR_FAILURE;
        }
    }
    answer_set(reply, results);
}

}  // namespace virtual_switch
