// SPDX-License-Identifier: Apache-2.0
#include "services/ethernet_stats_service.h"

#include "platform/if_index.h"
#include "port_mgr/opcodes.h"
#include "protocol/ethernet_stats_layout.h"
#include "services/line_card.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

constexpr uint32_t accepted = 1;
constexpr uint16_t out_of_reach = 1;

struct stats_request {
    if_index_t owner;  // the main interface, which counts
    uint16_t port;
    uint32_t word;
};

bool read_request(const mts_request_t &request, stats_request &asked) {
    const auto payload = payload_of(request);
    if (request.opcode != MTS_OPC_PM_GET_CLEAR_ETH_STATS || payload.size() != pm::stats_request_size) return false;
    const if_index_t if_index = ntoh_if_index(pm::load<uint32_t>(&payload[pm::stats_request_if_index]));
    asked.owner = if_index_get_mainintf_from_subintf(if_index);
    asked.port = pm::load_be16(&payload[pm::stats_request_port]);
    asked.word = pm::load_be32(&payload[pm::stats_request_word]);
    return asked.word == PM_ETH_STATS_READ || asked.word == PM_ETH_STATS_CLEAR;
}

// The number by which the line card knows a port that keeps counters.
uint16_t number_of(const port &at, uint16_t card_type) {
    if (at.kind == port_kind::fcip) return pm::tunnel_port(card_type, at.place.port_base);
    uint8_t number = 0;
    if_index_get_port(at.info.if_index, &number);
    return number;
}

bool counts_for(const chassis_model &model, uint8_t slot, const stats_request &asked) {
    const port *const at = model.find(asked.owner);
    if (at == nullptr || !keeping_counters.contains(at->kind) || !at->place.is_in(slot)) return false;
    return number_of(*at, model.line_cards.at(slot).card_type) == asked.port;
}

bool is_unreachable(const chassis_model &model, if_index_t if_index) {
    const auto settings = model.counting.find(if_index);
    return settings != model.counting.end() && settings->second.unreachable;
}

void count(switch_state &state, const stats_request &asked, uint8_t *answer) {
    traffic_counters &counters = state.counters();
    const pm_eth_stats_t stats = counters.read(asked.owner);
    pm::encode_record<pm::eth_stats_fields>(&stats, answer, hton_if_index);
    if (asked.word == PM_ETH_STATS_CLEAR) counters.clear(asked.owner);
}

}  // namespace

void ethernet_stats_service(void *line_card, const mts_request_t *request, mts_reply_t *reply) {
    auto *const answer = static_cast<uint8_t *>(mts_reply_payload(reply, sizeof(pm_eth_stats_t)));
    if (answer == nullptr) return;
    const auto &card = *static_cast<const line_card_context *>(line_card);
    const chassis_model &model = card.state->model();
    stats_request asked{};
    if (!read_request(*request, asked) || !counts_for(model, card.slot, asked)) return;
    pm::store_be32(answer + offsetof(pm_eth_stats_t, result), accepted);
    if (is_unreachable(model, asked.owner)) {
        return pm::store_be16(answer + offsetof(pm_eth_stats_t, communication_status), out_of_reach);
    }
    count(*card.state, asked, answer);
}

}  // namespace virtual_switch
