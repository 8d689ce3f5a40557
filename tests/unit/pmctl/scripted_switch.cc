// SPDX-License-Identifier: Apache-2.0
#include "scripted_switch.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform_dev/mts_dev.h"
#include "port_mgr/port_info_request.h"
#include "switch/interface_names.h"

scripted_switch the_switch;

namespace {

constexpr mts_handle_t the_handle = 41;
constexpr uint32_t whole_switch = 1;

// What the answers under way are about: the first word of a message is a position here, counted from 1.
std::vector<scripted_switch::range_answer> answers;

uint32_t deliver(mts_handle_t handle, const std::string &question, const scripted_switch::range_answer &answer,
                 mts_msg_t *response) {
    if (handle != the_handle) abort();
    the_switch.asked.push_back(question);
    if (answer.request_status != 0) return answer.request_status;
    ++the_switch.undropped_messages;
    answers.push_back(answer);
    response->word[0] = static_cast<uint32_t>(answers.size());
    return 0;
}

uint32_t deliver_all(mts_handle_t handle, const char *question, uint8_t mode, mts_msg_t *response) {
    if (mode != whole_switch) abort();
    return deliver(handle, question, {the_switch.request_status, the_switch.answer_status, the_switch.ports}, response);
}

template <typename Record>
uint32_t hand_out(uint32_t status, const std::vector<Record> &from, uint32_t *count, Record **records) {
    if (status != 0) return status;
    *count = static_cast<uint32_t>(from.size());
    *records = from.empty() ? nullptr : static_cast<Record *>(malloc(from.size() * sizeof(Record)));
    std::copy(from.begin(), from.end(), *records);
    return 0;
}

}  // namespace

mts_handle_t mts_dev_open() {
    errno = the_switch.open_error;
    if (the_switch.open_error != 0) return 0;
    ++the_switch.open_handles;
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

uint32_t pm_get_port_info(mts_handle_t handle, uint8_t mode, uint32_t, uint32_t, uint8_t, uint8_t, uint32_t,
                          const pm_if_index_range_t *, mts_msg_t *response) {
    return deliver_all(handle, "all", mode, response);
}

uint32_t pm_get_port_info_brief(mts_handle_t handle, uint8_t mode, uint32_t, uint32_t, uint8_t, uint8_t, uint32_t,
                                const pm_if_index_range_t *, mts_msg_t *response) {
    return deliver_all(handle, "brief", mode, response);
}

uint32_t pm_get_port_info_range(mts_handle_t handle, if_index_t first, if_index_t last, mts_msg_t *response) {
    const std::string question = pmctl::interface_name(first) + " " + pmctl::interface_name(last);
    return deliver(handle, question, the_switch.ranges[question], response);
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
