// SPDX-License-Identifier: Apache-2.0
// The scripted switch's transceivers, counters, listings and resources.
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <span>

#include "platform/idxmap.h"
#include "platform/if_index.h"
#include "platform/mts.h"
#include "port_mgr/if_index_listing.h"
#include "port_mgr/messaging.h"
#include "port_mgr/opcodes.h"
#include "scripted_switch.h"
#include "switch/interface_names.h"

namespace {

constexpr mts_handle_t the_handle = 41;
constexpr uint32_t listing_wait = 10;

// Those under way: the second word of a message is a position here, counted from 1.
std::vector<std::vector<uint8_t>> payloads;

void ask(mts_handle_t handle, const std::string &question) {
    if (handle != the_handle) abort();
    the_switch.asked.push_back(question);
}

uint32_t deliver(const scripted_switch::payload_answer &answer, mts_msg_t *message) {
    if (answer.request_status != 0) return answer.request_status;
    ++the_switch.undropped_messages;
    payloads.push_back(answer.payload);
    message->word[1] = static_cast<uint32_t>(payloads.size());
    return 0;
}

std::vector<uint8_t> &payload_of(const mts_msg_t *message) { return payloads.at(message->word[1] - 1); }

std::vector<pm_fcot_info_t> records_in(std::span<const pm_if_index_range_t> ranges) {
    std::vector<pm_fcot_info_t> records;
    for (const pm_if_index_range_t &each : ranges) {
        if (each.first != each.last) abort();
        const auto found = the_switch.transceivers.find(pmctl::interface_name(each.first));
        if (found != the_switch.transceivers.end()) records.push_back(found->second);
    }
    return records;
}

}  // namespace

uint32_t mts_errno_get(mts_handle_t) { return the_switch.last_error; }

// Tunnels live in the first slot.
int32_t idxmap_node_by_if_index(if_index_t index, uint32_t *node) {
    uint8_t slot = 0;
    if_index_get_slot(index, &slot);
    *node = PM_NODE_SUPERVISOR + slot;
    return 0;
}

void *mts_payload_get(const mts_msg_t *message) {
    std::vector<uint8_t> &payload = payload_of(message);
    return payload.empty() ? nullptr : payload.data();
}

uint32_t mts_payload_size(const mts_msg_t *message) { return static_cast<uint32_t>(payload_of(message).size()); }

uint32_t pm_get_next_port_fcot_info_with_ddm(mts_handle_t handle, uint32_t kind, int32_t range_count,
                                             const pm_if_index_range_t *ranges, uint32_t *count,
                                             pm_fcot_info_t **records, uint32_t last) {
    if (kind != 0 || last != 0) abort();
    const std::span all(ranges, static_cast<size_t>(range_count));
    std::string question = "transceivers";
    for (const pm_if_index_range_t &each : all) question += " " + pmctl::interface_name(each.first);
    ask(handle, question);
    const auto status = the_switch.transceiver_statuses.find(pmctl::interface_name(ranges[0].first));
    if (status != the_switch.transceiver_statuses.end()) return status->second;
    if (the_switch.transceivers_are_lost) return 0;
    const std::vector<pm_fcot_info_t> found = records_in(all);
    *count = static_cast<uint32_t>(found.size());
    *records = static_cast<pm_fcot_info_t *>(malloc(found.size() * sizeof(pm_fcot_info_t) + 1));
    std::copy(found.begin(), found.end(), *records);
    return 0;
}

uint32_t pm_get_sfp_diag_info(mts_handle_t handle, if_index_t if_index, pm_sfp_diag_info_t *info,
                              pm_sfp_diag_extra_t *extra) {
    const std::string name = pmctl::interface_name(if_index);
    ask(handle, "diagnostics " + name);
    const auto found = the_switch.readings.find(name);
    if (found == the_switch.readings.end()) return EHOSTUNREACH;
    if (found->second.status != 0) return found->second.status;
    *info = found->second.info;
    if (found->second.extra) *extra = *found->second.extra;
    return 0;
}

int32_t pm_get_clear_eth_stats(mts_handle_t handle, if_index_t interface, if_index_t request, uint32_t request_word,
                               pm_eth_stats_t *stats) {
    if (interface != request || request_word > PM_ETH_STATS_CLEAR) abort();
    const std::string name = pmctl::interface_name(interface);
    ask(handle, (request_word == PM_ETH_STATS_CLEAR ? "clear " : "read ") + name);
    const auto found = the_switch.counters.find(name);
    if (found == the_switch.counters.end()) {
        the_switch.last_error = EHOSTUNREACH;
        return -1;
    }
    const auto &answer = found->second;
    if (answer.error != 0) the_switch.last_error = answer.error;
    if (answer.status == 0) *stats = answer.stats;
    return answer.status;
}

uint32_t pm_get_if_index_listing(uint8_t type, mts_handle_t handle, mts_msg_t *message, uint32_t wait) {
    if (wait != listing_wait) abort();
    ask(handle, "listing " + std::to_string(type));
    return deliver(the_switch.listings[type], message);
}

uint32_t pm_get_module_resources(mts_handle_t handle, uint16_t range_count, const pm_if_index_range_t *,
                                 uint16_t module, uint32_t node, mts_msg_t *response) {
    if (range_count != 0 || node != PM_NODE_SUPERVISOR) abort();
    ask(handle, "resources " + std::to_string(module));
    return deliver(the_switch.resources[module], response);
}

int32_t pm_get_proc_net_dev_stats(const char *name, pm_net_dev_stats_t *stats) {
    const auto found = the_switch.host_interfaces.find(name);
    if (found == the_switch.host_interfaces.end()) return -1;
    *stats = found->second;
    return 0;
}
