// SPDX-License-Identifier: Apache-2.0
#include "virtual_switch_test.h"

#include <cstdlib>

#include "platform_dev/if_index_dev.h"
#include "platform_dev/mts_dev.h"
#include "port_mgr/cpp/names.hpp"

namespace {

// Parses the answer of a query that succeeded, and releases it.
template <typename Record>
answer<Record> parse(mts_handle_t handle, uint32_t status, mts_msg_t &message,
                     uint32_t (*parser)(const mts_msg_t *, uint32_t *, Record **)) {
    if (status != 0) return {status, {}};
    uint32_t count = 0;
    Record *records = nullptr;
    status = parser(&message, &count, &records);
    mts_drop(handle, &message);
    answer<Record> parsed{status, {}};
    if (records != nullptr) parsed.records.assign(records, records + count);
    std::free(records);
    return parsed;
}

std::vector<std::string> daemon_command(const std::string &chassis_file, const std::vector<std::string> &options) {
    std::vector<std::string> command{PM_VIRTUAL_SWITCH};
    command.insert(command.end(), options.begin(), options.end());
    command.push_back(chassis_file);
    return command;
}

}  // namespace

virtual_switch_process::virtual_switch_process(const std::string &chassis_file, const std::vector<std::string> &options)
    : child_process(daemon_command(chassis_file, options)), ready_line_(read_line(standard_output)) {
    EXPECT_THAT(ready_line_, testing::StartsWith("pm-virtual-switch: ready: "));
}

client::client() : handle_(mts_dev_open()) { EXPECT_NE(handle_, 0u); }

client::~client() { mts_dev_close(handle_); }

answer<pm_port_info_t> client::range(const char *first, const char *last) const {
    mts_msg_t message{};
    const uint32_t status = pm_get_port_info_range(handle_, index_of(first), index_of(last), &message);
    return parse(handle_, status, message, pm_parse_get_port_info);
}

answer<pm_port_info_t> client::ports(uint8_t mode, const std::vector<pm_if_index_range_t> &ranges) const {
    mts_msg_t message{};
    const uint32_t status =
        pm_get_port_info(handle_, mode, 0, 0, 0, 0, static_cast<uint32_t>(ranges.size()), ranges.data(), &message);
    return parse(handle_, status, message, pm_parse_get_port_info);
}

answer<pm_port_info_brief_t> client::brief(uint8_t mode, const std::vector<pm_if_index_range_t> &ranges) const {
    mts_msg_t message{};
    const uint32_t status = pm_get_port_info_brief(handle_, mode, 0, 0, 0, 0, static_cast<uint32_t>(ranges.size()),
                                                   ranges.data(), &message);
    return parse(handle_, status, message, pm_parse_get_port_info_brief);
}

answer<pm_port_info_t> client::next(if_index_t if_index) const {
    mts_msg_t message{};
    const uint32_t status = pm_get_next_port_info(handle_, if_index, &message);
    return parse(handle_, status, message, pm_parse_get_next_port_info);
}

std::vector<uint8_t> client::ask(uint32_t sap, uint32_t opcode, const std::vector<uint8_t> &payload) const {
    mts_msg_t message{};
    constexpr uint32_t wait = 10;
    const int32_t result = pm_ips_send_receive(handle_, PM_NODE_SUPERVISOR, sap, opcode, payload.data(),
                                               static_cast<uint32_t>(payload.size()), &message, wait);
    EXPECT_EQ(result, 0);
    if (result != 0) return {};
    const auto *const bytes = static_cast<const uint8_t *>(mts_payload_get(&message));
    std::vector<uint8_t> received(bytes, bytes + mts_payload_size(&message));
    mts_drop(handle_, &message);
    return received;
}

if_index_t index_of(const std::string &name) {
    if_index_t if_index = 0;
    EXPECT_EQ(if_index_from_name(name.c_str(), &if_index), 0) << name;
    return if_index;
}

std::string name_of(if_index_t if_index) { return port_mgr::interface_name(if_index); }

pm_if_index_range_t range_of(const char *first, const char *last) { return {index_of(first), index_of(last)}; }
