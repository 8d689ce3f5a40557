// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_inventory.h"

#include <arpa/inet.h>

#include <cstring>

#include <fmt/core.h>

#include "failure.h"
#include "platform/if_index.h"
#include "port_mgr/if_index_listing.h"
#include "port_mgr/opcodes.h"
#include "port_mgr/status.h"
#include "switch/answer_records.h"
#include "switch/interface_types.h"

namespace pmctl {
namespace {

constexpr uint32_t listing_wait_seconds = 10;

template <typename Record>
std::vector<Record> records_in(const std::string &subject, const port_mgr::message &answer) {
    const std::span<const std::byte> bytes = answer_records(subject, answer, sizeof(Record));
    std::vector<Record> records(bytes.size() / sizeof(Record));
    if (!records.empty()) std::memcpy(records.data(), bytes.data(), bytes.size());
    return records;
}

std::string subject_of(uint8_t module) { return module == 0 ? "all modules" : fmt::format("module {}", module); }

void refuse_unknown_module(uint8_t module, const port_mgr::message &answer) {
    if (answer_status(answer) == PM_ERR_INVALID_RANGE) throw query_refused(fmt::format("no such module: {}", module));
}

}  // namespace

std::vector<if_index_t> switch_inventory::interfaces_of_type(uint8_t type) {
    const std::string subject = fmt::format("interfaces of type {}", type_word(type));
    mts_msg_t response{};
    const uint32_t status = pm_get_if_index_listing(type, connection_.handle(), &response, listing_wait_seconds);
    connection_.check(subject, {status, port_mgr::origin::exchange});
    const port_mgr::message answer(connection_.handle(), response);
    std::vector<if_index_t> interfaces = records_in<if_index_t>(subject, answer);
    for (if_index_t &each : interfaces) each = ntoh_if_index(each);
    return interfaces;
}

std::vector<pm_module_resource_t> switch_inventory::resources(uint8_t module) {
    const std::string subject = subject_of(module);
    mts_msg_t response{};
    const uint32_t status =
        pm_get_module_resources(connection_.handle(), 0, nullptr, module, PM_NODE_SUPERVISOR, &response);
    connection_.check(subject, {status, port_mgr::origin::exchange});
    const port_mgr::message answer(connection_.handle(), response);
    refuse_unknown_module(module, answer);
    std::vector<pm_module_resource_t> resources = records_in<pm_module_resource_t>(subject, answer);
    for (pm_module_resource_t &each : resources)
        each = {ntohs(each.module), ntohs(each.resource), ntohl(each.total), ntohl(each.used)};
    return resources;
}

}  // namespace pmctl
