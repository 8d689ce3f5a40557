// SPDX-License-Identifier: Apache-2.0
#include "services/sub_interface_service.h"

#include <bitset>
#include <climits>

#include "platform/if_index.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "protocol/config_layout.h"
#include "protocol/cursor.h"
#include "services/answer.h"
#include "services/request_payload.h"

namespace virtual_switch {
namespace {

using bytes = std::span<const uint8_t>;
using number_set = std::bitset<pm::sub_interface_set_size * CHAR_BIT>;

struct sub_interface_request {
    uint32_t operation;
    std::map<if_index_t, number_set> sets;  // by main interface; of several entries for one, all numbers
};

void add_numbers(const uint8_t (&bits)[pm::sub_interface_set_size], number_set &to) {
    for (size_t number = 0; number < to.size(); ++number) {
        if ((bits[number / CHAR_BIT] >> (CHAR_BIT - 1 - number % CHAR_BIT) & 1) != 0) to.set(number);
    }
}

uint32_t read_entry(const chassis_model &model, bytes from, sub_interface_request &request) {
    const auto entry = pm::load<pm_sub_intf_entry_t>(from.data());
    if (entry.sub_interfaces.size != pm::sub_interface_set_size) return PM_ERR_INVALID_PARAM;
    const if_index_t main = pm::swap_be32(entry.main);
    const port *const found = model.find(main);
    if (found == nullptr || !switched_ethernet.contains(found->kind)) return PM_ERR_INVALID_RANGE;
    add_numbers(entry.sub_interfaces.bits, request.sets[main]);
    return 0;
}

uint32_t read_request(const chassis_model &model, bytes payload, sub_interface_request &request) {
    pm::byte_reader reader(payload);
    request.operation = reader.get_be32();
    static_cast<void>(reader.get_be32());
    const uint32_t count = reader.get_be32();
    const bool fits = reader.ok() && uint64_t{count} * pm::sub_interface_entry_size == reader.rest().size();
    const bool is_known = request.operation >= PM_SUB_INTF_CREATE && request.operation <= PM_SUB_INTF_REPLACE;
    if (!fits || !is_known || count == 0) return PM_ERR_INVALID_PARAM;
    for (bytes rest = reader.rest(); !rest.empty(); rest = rest.subspan(pm::sub_interface_entry_size)) {
        const uint32_t status = read_entry(model, rest, request);
        if (status != 0) return status;
    }
    return 0;
}

number_set reserved_numbers() {
    number_set reserved;
    for (const uint32_t number : pm::reserved_sub_interfaces) reserved.set(number);
    return reserved;
}

number_set existing_numbers(const chassis_model &model, if_index_t main) {
    number_set existing;
    const auto end = model.ports.upper_bound(main + static_cast<if_index_t>(existing.size()) - 1);
    for (auto at = model.ports.upper_bound(main); at != end; ++at) existing.set(at->first - main);
    return existing;
}

// The numbers that an interface has afterwards.
number_set remaining_numbers(uint32_t operation, const number_set &existing, const number_set &asked) {
    if (operation == PM_SUB_INTF_CREATE) return existing | asked;
    if (operation == PM_SUB_INTF_DELETE) return existing & ~asked;
    return asked;
}

// Puts what a request asks for into `changes`. Returns 0, or the status of the refusal.
uint32_t apply(const switch_state &state, const sub_interface_request &request, configuration &changes) {
    bool deletes_any = false;
    for (const auto &[main, asked] : request.sets) {
        const number_set existing = existing_numbers(state.model(), main);
        const number_set remaining = remaining_numbers(request.operation, existing, asked);
        const number_set created = remaining & ~existing;
        const number_set deleted = existing & ~remaining;
        deletes_any = deletes_any || deleted.any();
        if ((created & reserved_numbers()).any()) return PM_ERR_INVALID_PARAM;
        for (if_index_t number = 0; number < existing.size(); ++number) {
            if (created.test(number)) changes.create(main + number);
            if (deleted.test(number)) changes.remove(main + number, state.chassis());
        }
        if (changes.created.size() > most_created_interfaces) return PM_ERR_REJECTED;
    }
    return request.operation == PM_SUB_INTF_DELETE && !deletes_any ? PM_ERR_INVALID_RANGE : 0;
}

uint32_t configure_sub_interfaces(switch_state &state, const mts_request_t &request) {
    if (request.sap != PM_SAP_ETHERNET_CHANNEL) return PM_ERR_REJECTED;
    sub_interface_request asked{};
    const uint32_t read = read_request(state.model(), payload_of(request), asked);
    if (read != 0) return read;
    configuration changes = state.changes();
    const uint32_t applied = apply(state, asked, changes);
    if (applied != 0) return applied;
    return state.change(std::move(changes)) ? 0 : PM_ERR_FAILURE;
}

}  // namespace

void serve_sub_interfaces(switch_state &state, const mts_request_t &request, mts_reply_t *reply) {
    answer_sub_interfaces(reply, configure_sub_interfaces(state, request));
}

}  // namespace virtual_switch
