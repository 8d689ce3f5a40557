// SPDX-License-Identifier: Apache-2.0
#include "services/listing_service.h"

#include <algorithm>
#include <set>

#include "chassis/chassis_error.h"
#include "chassis/interface_names.h"
#include "platform/if_index.h"
#include "port_mgr/status.h"
#include "protocol/interface_owner.h"
#include "protocol/listing_layout.h"
#include "services/answer.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

void answer_indexes(mts_reply_t *reply, const std::vector<if_index_t> &interfaces) {
    uint8_t *to = start_answer(reply, interfaces.size(), interfaces.size() * sizeof(if_index_t));
    if (to == nullptr) return;
    for (const if_index_t if_index : interfaces) {
        pm::store(to, hton_if_index(if_index));
        to += sizeof if_index;
    }
}

// Keeps the interfaces of a type, each where it came first.
void keep_type(std::vector<if_index_t> &interfaces, uint8_t type) {
    std::set<if_index_t> seen;
    std::erase_if(interfaces, [&](if_index_t at) { return type_of(at) != type || !seen.insert(at).second; });
}

// Answers a request of `size` bytes, which begins with a type, with those interfaces of it that `find` finds. It
// returns 0, or the status of the refusal.
void list(const mts_request_t &request, size_t size, mts_reply_t *reply, auto find) {
    const auto payload = payload_of(request);
    if (payload.size() != size) return answer_status(reply, PM_ERR_INVALID_PARAM);
    const uint8_t type = payload[0];
    if (pm::owner_of_type(type) != request.sap) return answer_status(reply, PM_ERR_REJECTED);
    std::vector<if_index_t> interfaces;
    const uint32_t status = find(payload.subspan(pm::listing_request_size), interfaces);
    if (status != 0) return answer_status(reply, status);
    keep_type(interfaces, type);
    answer_indexes(reply, interfaces);
}

using byte_span = std::span<const uint8_t>;

uint32_t find_named(byte_span block_and_more, std::vector<if_index_t> &interfaces) {
    const byte_span block = block_and_more.first(PM_STARTUP_BLOCK_SIZE);
    const auto end = std::ranges::find(block, 0);
    if (end == block.end()) return PM_ERR_INVALID_PARAM;
    const std::string text(block.begin(), end);
    if (text.empty()) return 0;
    try {
        interfaces = read_interfaces({1, text}, "block");
        return 0;
    } catch (const chassis_error &) {
        return PM_ERR_INVALID_PARAM;
    }
}

}  // namespace

void serve_listing(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    const auto find_all = [&](byte_span, std::vector<if_index_t> &interfaces) {
        for (const auto &[if_index, at] : state.model().ports) interfaces.push_back(if_index);
        return 0u;
    };
    list(request, pm::listing_request_size, reply, find_all);
}

void serve_startup_listing(switch_state &, const mts_request_t &request, mts_reply_t *reply) {
    list(request, pm::startup_listing_request_size, reply, find_named);
}

}  // namespace virtual_switch
