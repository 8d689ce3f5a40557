// SPDX-License-Identifier: Apache-2.0
#include "scripted_switch.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <span>

#include "platform_dev/mts_dev.h"
#include "port_mgr/loopback_config.h"
#include "port_mgr/module_interface_listing.h"
#include "port_mgr/port_config.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/service_selection.h"
#include "port_mgr/sub_interface_config.h"
#include "switch/interface_names.h"

scripted_switch the_switch;

namespace {

constexpr mts_handle_t the_handle = 41;
constexpr uint32_t whole_switch = 1;
constexpr uint32_t by_token = 1;
constexpr uint32_t first_token = 7000;
constexpr uint32_t longest_wait = 10;
char value_not_to_be_freed[1];  // what a failed request leaves for results

// What the answers under way are about: the first word of a message is a position here, counted from 1.
std::vector<scripted_switch::range_answer> answers;

// The positions of those that are still to be received.
std::set<uint32_t> under_way;

uint32_t deliver(mts_handle_t handle, const std::string &question, const scripted_switch::range_answer &answer,
                 mts_msg_t *message) {
    if (handle != the_handle) abort();
    the_switch.asked.push_back(question);
    if (answer.request_status != 0) return answer.request_status;
    ++the_switch.undropped_messages;
    answers.push_back(answer);
    message->word[0] = static_cast<uint32_t>(answers.size());
    return 0;
}

template <typename Record>
uint32_t hand_out(uint32_t status, const std::vector<Record> &from, uint32_t *count, Record **records) {
    if (status != 0) return status;
    *count = static_cast<uint32_t>(from.size());
    *records = from.empty() ? nullptr : static_cast<Record *>(malloc(from.size() * sizeof(Record)));
    std::copy(from.begin(), from.end(), *records);
    return 0;
}

std::string names_of(uint32_t count, const pm_if_index_range_t *ranges) {
    std::string names;
    for (const pm_if_index_range_t &each : std::span(ranges, count)) {
        names += (names.empty() ? "" : " ") + pmctl::interface_name(each.first);
        if (each.last != each.first) names += " " + pmctl::interface_name(each.last);
    }
    return names;
}

template <typename Map>
auto found_in(const Map &map, const typename Map::key_type &key) {
    const auto found = map.find(key);
    return found == map.end() ? typename Map::mapped_type{} : found->second;
}

bool is_silent(const std::string &name) {
    return std::find(the_switch.silent.begin(), the_switch.silent.end(), name) != the_switch.silent.end();
}

// One result for each interface, in their order, and the first status that is not 0.
uint32_t answer_set(uint32_t range_count, const pm_if_index_range_t *ranges, std::vector<pm_set_port_result_t> &found) {
    uint32_t status = 0;
    for (const pm_if_index_range_t &each : std::span(ranges, range_count)) {
        const std::string name = pmctl::interface_name(each.first);
        if (is_silent(name)) continue;
        const uint32_t one = found_in(the_switch.set_statuses, name);
        found.push_back({each.first, htonl(one)});
        if (status == 0) status = one;
    }
    return status;
}

uint32_t answer_creation(mts_handle_t handle, uint32_t flag, const pm_if_range_list_t *ranges) {
    if (handle != the_handle) abort();
    const std::string action = flag != 0 ? "create " : "delete ";
    the_switch.changes.push_back({action + names_of(ranges->count, ranges->ranges), 0, {}});
    return the_switch.creation_status;
}

}  // namespace

mts_handle_t mts_dev_open() {
    errno = the_switch.open_error;
    if (the_switch.open_error != 0) return 0;
    ++the_switch.open_handles;
    under_way.clear();
    the_switch.last_error = 0;
    return the_handle;
}

int32_t mts_dev_close(mts_handle_t) {
    --the_switch.open_handles;
    return 0;
}

int32_t mts_dev_runtime_dir(char *path, size_t size) {
    snprintf(path, size, "/tmp/lab");
    return 0;
}

int32_t mts_drop(mts_handle_t, mts_msg_t *) {
    --the_switch.undropped_messages;
    return 0;
}

uint32_t mts_rr_token_get(const mts_msg_t *request) { return first_token + request->word[0]; }

int32_t mts_recv(mts_handle_t handle, mts_msg_t *response, const mts_recv_options_t *options) {
    const uint32_t position = options->word[3] - first_token;
    if (handle != the_handle || options->word[0] != by_token || options->word[2] != longest_wait) abort();
    if (under_way.erase(position) == 0) abort();
    the_switch.last_error = answers.at(position - 1).receive_error;
    if (the_switch.last_error != 0) return -1;
    ++the_switch.undropped_messages;
    response->word[0] = position;
    return 0;
}

uint32_t pm_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t, uint32_t, uint8_t, uint8_t, uint32_t,
                                const pm_if_index_range_t *, mts_msg_t *response) {
    if (mode != whole_switch) abort();
    return deliver(handle, "brief", {the_switch.request_status, 0, {}}, response);
}

uint32_t pm_send_get_port_info(mts_handle_t handle, uint8_t, uint32_t, uint32_t, uint8_t, uint8_t, uint32_t,
                               const pm_if_index_range_t *ranges, mts_msg_t *request) {
    if (under_way.size() == the_switch.queue_room) return EAGAIN;
    const std::string question = pmctl::interface_name(ranges->first) + " " + pmctl::interface_name(ranges->last);
    const uint32_t status = deliver(handle, question, the_switch.ranges[question], request);
    if (status == 0) under_way.insert(request->word[0]);
    the_switch.most_under_way = std::max(the_switch.most_under_way, under_way.size());
    return status;
}

uint32_t pm_get_next_port_info(mts_handle_t handle, if_index_t, mts_msg_t *response) {
    const uint32_t status = the_switch.port_manager_runs ? 0 : EHOSTUNREACH;
    return deliver(handle, "next", {status, 0, {}}, response);
}

uint32_t pm_parse_get_port_info(const mts_msg_t *message, uint32_t *count, pm_port_info_t **records) {
    const auto &answer = answers.at(message->word[0] - 1);
    return hand_out(answer.answer_status, answer.ports, count, records);
}

uint32_t pm_parse_get_port_info_brief(const mts_msg_t *, uint32_t *count, pm_port_info_brief_t **records) {
    return hand_out(the_switch.answer_status, the_switch.brief_ports, count, records);
}

uint32_t pm_get_mts_sap(if_index_t index) {
    const uint32_t service = found_in(the_switch.services, pmctl::interface_name(index));
    return service == 0 ? 43 : service;
}

uint32_t pm_cmi_get_port_config(mts_handle_t handle, uint32_t kind, uint32_t range_count,
                                const pm_if_index_range_t *ranges, uint32_t *count, pm_port_info_t **records,
                                uint32_t last) {
    if (handle != the_handle || kind != PM_CONFIG_GET_FROM_OWNER || last != 0) abort();
    const std::string names = names_of(range_count, ranges);
    the_switch.asked.push_back("config " + names);
    const auto &answer = the_switch.configured[names];
    if (answer.request_status != 0) return answer.request_status;
    return hand_out(answer.answer_status, answer.ports, count, records);
}

uint32_t pm_cmi_set_port_config(mts_handle_t handle, const char *first_text, const char *second_text,
                                uint32_t range_count, const pm_if_index_range_t *ranges, uint8_t type, uint8_t length,
                                const void *value, uint32_t *count, pm_set_port_result_t **entries, uint32_t last) {
    if (handle != the_handle || last != 0) abort();
    const auto *bytes = static_cast<const uint8_t *>(value);
    the_switch.changes.push_back({names_of(range_count, ranges), type, {bytes, bytes + length}});
    the_switch.asked_by.push_back(std::string(first_text) + " " + second_text);
    *count = 0;
    *entries = nullptr;
    const uint32_t failure = found_in(the_switch.set_failures, pmctl::interface_name(ranges[0].first));
    if (failure != 0 && failure < 4096) *entries = reinterpret_cast<pm_set_port_result_t *>(value_not_to_be_freed);
    if (failure != 0) return failure;
    std::vector<pm_set_port_result_t> found;
    const uint32_t status = answer_set(range_count, ranges, found);
    hand_out(0, found, count, entries);
    return status;
}

uint32_t pm_cli_config_sub_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low, uint32_t mask_high,
                                     const pm_if_range_list_t *ranges, uint32_t) {
    if ((mask_low & PM_IF_KINDS_WITH_SUB_INTF) == 0 || mask_high != 0) abort();
    return answer_creation(handle, flag, ranges);
}

uint32_t pm_cli_config_loopback_interface(mts_handle_t handle, uint32_t flag, uint32_t mask_low, uint32_t mask_high,
                                          const pm_if_range_list_t *ranges, uint32_t) {
    if (mask_low != PM_IF_KIND_LOOPBACK || mask_high != 0) abort();
    return answer_creation(handle, flag, ranges);
}

uint32_t pm_cmi_get_module_interface_listing(mts_handle_t handle, uint8_t module, if_index_t index, uint32_t,
                                             uint32_t *count, pm_port_info_t **records) {
    if (handle != the_handle) abort();
    const uint8_t type = pmctl::interface_type(index);
    the_switch.asked.push_back("module " + std::to_string(module) + " type " + std::to_string(type));
    const auto answer = found_in(the_switch.modules, type);
    if (answer.request_status != 0) return answer.request_status;
    return hand_out(answer.answer_status, answer.ports, count, records);
}
