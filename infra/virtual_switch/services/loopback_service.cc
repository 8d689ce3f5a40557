// SPDX-License-Identifier: Apache-2.0
#include "services/loopback_service.h"

#include <algorithm>

#include "platform/if_index.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/request_layout.h"
#include "services/port_selection.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

bool is_range_of_loopbacks(const pm_if_index_range_t &range) {
    return range.first <= range.last && type_of(range.first) == IF_TYPE_LOOPBACK &&
           type_of(range.last) == IF_TYPE_LOOPBACK;
}

uint32_t read_ranges(std::span<const uint8_t> payload, std::vector<pm_if_index_range_t> &ranges) {
    pm::byte_reader reader(payload);
    const uint32_t count = reader.get_be32();
    const bool fits = reader.ok() && uint64_t{count} * pm::wire_range_size == reader.rest().size();
    if (!fits || count == 0) return PM_ERR_INVALID_PARAM;
    for (uint32_t i = 0; i < count; ++i) {
        ranges.push_back(read_range(reader));
        if (!is_range_of_loopbacks(ranges.back())) return PM_ERR_INVALID_RANGE;
    }
    return 0;
}

size_t count_loopbacks(const std::set<if_index_t> &created) {
    return static_cast<size_t>(std::ranges::count_if(created, [](if_index_t at) { return !is_sub_interface(at); }));
}

// The ranges are counted before anything is created: a single one can name 16 million interfaces.
uint32_t create(const switch_state &state, const std::vector<pm_if_index_range_t> &ranges, configuration &changes) {
    uint64_t asked = 0;
    for (const pm_if_index_range_t &range : ranges) asked += uint64_t{range.last} - range.first + 1;
    if (asked > most_created_loopbacks) return PM_ERR_REJECTED;
    for (const pm_if_index_range_t &range : ranges) {
        for (if_index_t at = range.first; at <= range.last; ++at) {
            if (state.model().find(at) == nullptr) changes.create(at);
        }
    }
    return count_loopbacks(changes.created) > most_created_loopbacks ? PM_ERR_REJECTED : 0;
}

// Many ranges may name the same interfaces, so each is looked at once.
uint32_t remove(const switch_state &state, const std::vector<pm_if_index_range_t> &ranges, configuration &changes) {
    std::set<if_index_t> left;
    for (const auto &[if_index, at] : state.model().ports) {
        if (at.kind == port_kind::loopback) left.insert(if_index);
    }
    bool removes_any = false;
    for (const pm_if_index_range_t &range : ranges) {
        const auto begin = left.lower_bound(range.first);
        const auto end = left.upper_bound(range.last);
        removes_any = removes_any || begin != end;
        for (auto at = begin; at != end; ++at) changes.remove(*at, state.chassis());
        left.erase(begin, end);
    }
    return removes_any ? 0 : PM_ERR_INVALID_RANGE;
}

uint32_t apply(const switch_state &state, const mts_request_t &request, configuration &changes) {
    std::vector<pm_if_index_range_t> ranges;
    const uint32_t status = read_ranges(payload_of(request), ranges);
    if (status != 0) return status;
    if (request.kind == PM_LOOPBACK_CREATE) return create(state, ranges, changes);
    return request.kind == PM_LOOPBACK_DELETE ? remove(state, ranges, changes) : PM_ERR_INVALID_PARAM;
}

uint32_t configure_loopbacks(switch_state &state, const mts_request_t &request) {
    if (request.sap != PM_SAP_ETHERNET_CHANNEL) return PM_ERR_REJECTED;
    configuration changes = state.changes();
    const uint32_t status = apply(state, request, changes);
    if (status != 0) return status;
    return state.change(std::move(changes)) ? 0 : PM_ERR_FAILURE;
}

}  // namespace

void serve_loopbacks(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    const uint32_t status = configure_loopbacks(state, request);
    if (status != 0) return mts_reply_fail(reply, status);
    mts_reply_payload(reply, 0);
}

}  // namespace virtual_switch
