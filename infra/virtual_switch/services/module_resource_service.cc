// SPDX-License-Identifier: Apache-2.0
#include "services/module_resource_service.h"

#include <algorithm>
#include <array>
#include <optional>

#include "port_mgr/messaging.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/request_layout.h"
#include "services/line_card.h"
#include "services/port_selection.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

// What one interface that lives in a module adds, to what there is and to what is in use.

uint64_t ports(const port &at) { return at.kind != port_kind::fcip && at.kind != port_kind::sub_interface ? 1 : 0; }

uint64_t ports_in_use(const port &at) { return at.is_up() ? ports(at) : 0; }

// 0 credits stand for the default.
uint64_t credits(const port &at) {
    if (at.kind != port_kind::fc) return 0;
    const uint32_t configured = at.info.bb_credit[0];
    return configured != 0 ? configured : default_port_info(at.kind, at.info.if_index).bb_credit[0];
}

uint64_t credits_in_use(const port &at) { return at.is_up() ? credits(at) : 0; }

uint64_t speed_in_use(const port &at) { return ports_in_use(at) * at.info.oper_speed; }

// A port that was made faster than its kind is has that speed.
uint64_t top_speed(const port &at) { return std::max(ports(at) * traits_of(at.kind).top_speed, speed_in_use(at)); }

uint64_t possible_sub_interfaces(const port &at) {
    constexpr uint64_t most = 4096 - pm::reserved_sub_interfaces.size();
    return switched_ethernet.contains(at.kind) ? most : 0;
}

uint64_t sub_interfaces(const port &at) { return at.kind == port_kind::sub_interface ? 1 : 0; }

struct module_resource {
    uint16_t number;
    uint64_t (*total)(const port &at);
    uint64_t (*used)(const port &at);
};

constexpr std::array module_resources{
    module_resource{PM_RESOURCE_PORTS, ports, ports_in_use},
    module_resource{PM_RESOURCE_BB_CREDITS, credits, credits_in_use},
    module_resource{PM_RESOURCE_BANDWIDTH, top_speed, speed_in_use},
    module_resource{PM_RESOURCE_SUB_INTERFACES, possible_sub_interfaces, sub_interfaces},
};

// Ranges of interfaces, asked which they name. Those that are backwards or of two types name none.
class range_set {
  public:
    explicit range_set(std::vector<pm_if_index_range_t> ranges) {
        std::ranges::sort(ranges, {}, &pm_if_index_range_t::first);
        if_index_t reach = 0;
        for (const pm_if_index_range_t &range : ranges) {
            if (type_of(range.first) == type_of(range.last)) reach = std::max(reach, range.last);
            reach_[range.first] = reach;
        }
    }

    [[nodiscard]] bool contains(if_index_t if_index) const {
        const auto behind = reach_.upper_bound(if_index);
        return behind != reach_.begin() && std::prev(behind)->second >= if_index;
    }

  private:
    std::map<if_index_t, if_index_t> reach_;  // how far the ranges go that begin here or before
};

struct resource_request {
    uint16_t module;  // counted from 1; 0 for all
    std::vector<pm_if_index_range_t> ranges;
};

bool read_request(std::span<const uint8_t> payload, resource_request &asked) {
    pm::byte_reader reader(payload);
    asked.module = reader.get_be16();
    const uint16_t count = reader.get_be16();
    if (!reader.ok() || reader.rest().size() != count * pm::wire_range_size) return false;
    for (uint16_t i = 0; i < count; ++i) asked.ranges.push_back(read_range(reader));
    return true;
}

uint32_t cut(uint64_t sum) { return static_cast<uint32_t>(std::min<uint64_t>(sum, UINT32_MAX)); }

using record_list = std::vector<pm_module_resource_t>;  // host order

// Without ranges all interfaces count.
void add_module(const chassis_model &model, uint8_t slot, const std::optional<range_set> &counted,
                record_list &records) {
    for (const module_resource &resource : module_resources) {
        uint64_t total = 0;
        uint64_t used = 0;
        for (const auto &[if_index, at] : model.ports) {
            if (!at.place.is_in(slot)) continue;
            total += resource.total(at);
            if (!counted || counted->contains(if_index)) used += resource.used(at);
        }
        const auto module = static_cast<uint16_t>(slot + 1);
        if (total != 0) records.push_back({module, resource.number, cut(total), cut(used)});
    }
}

void answer_resources(mts_reply_t *reply, const record_list &records) {
    const size_t size = records.size() * sizeof(pm_module_resource_t);
    uint8_t *const to = start_answer(reply, records.size(), size);
    if (to == nullptr) return;
    pm::byte_writer writer({to, size});
    for (const pm_module_resource_t &record : records) {
        writer.put_be16(record.module);
        writer.put_be16(record.resource);
        writer.put_be32(record.total);
        writer.put_be32(record.used);
    }
}

// `slots` are those that the node knows.
void serve(const chassis_model &model, const std::vector<uint8_t> &slots, const mts_request_t &request,
           mts_reply_t *reply) {
    if (request.opcode != MTS_OPC_PM_GET_MODULE_RESOURCES) return answer_status(reply, PM_ERR_FAILURE);
    resource_request asked{};
    if (!read_request(payload_of(request), asked)) return answer_status(reply, PM_ERR_INVALID_PARAM);
    std::optional<range_set> counted;
    if (!asked.ranges.empty()) counted.emplace(std::move(asked.ranges));
    bool is_known = asked.module == 0;
    record_list records;
    for (const uint8_t slot : slots) {
        if (asked.module != 0 && asked.module != slot + 1) continue;
        is_known = true;
        add_module(model, slot, counted, records);
    }
    if (!is_known) return answer_status(reply, PM_ERR_INVALID_RANGE);
    answer_resources(reply, records);
}

}  // namespace

void supervisor_resource_service(void *state, const mts_request_t *request, mts_reply_t *reply) {
    const chassis_model &model = static_cast<const switch_state *>(state)->model();
    std::vector<uint8_t> slots;
    for (const auto &[slot, card] : model.line_cards) slots.push_back(slot);
    serve(model, slots, *request, reply);
}

void line_card_resource_service(void *line_card, const mts_request_t *request, mts_reply_t *reply) {
    const auto &card = *static_cast<const line_card_context *>(line_card);
    serve(card.state->model(), {card.slot}, *request, reply);
}

}  // namespace virtual_switch
