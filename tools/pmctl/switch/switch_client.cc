// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_client.h"

#include <fmt/core.h>

#include "failure.h"
#include "platform_dev/if_index_dev.h"
#include "port_mgr/module_interface_listing.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "switch/interface_pages.h"

namespace pmctl {
namespace {

constexpr const char *every_interface = "all interfaces";
constexpr uint8_t slot_port_types[] = {IF_TYPE_FC, IF_TYPE_ETHERNET, IF_TYPE_SLOT_PORT, IF_TYPE_ETHERNET_KIND,
                                       IF_TYPE_ETHERNET_SFP};

// Any interface of a type: it tells the service that is asked.
if_index_t first_of_type(uint8_t type) {
    if_index_t index = 0;
    if_index_slot_port_init(&index, type, 0, 0);
    return index;
}

}  // namespace

record_array<pm_port_info_brief_t> switch_client::brief_ports() {
    const auto request = [](mts_handle_t handle, mts_msg_t *response) {
        return pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    };
    return query<pm_port_info_brief_t>(every_interface, request, pm_parse_get_port_info_brief);
}

std::vector<if_index_t> switch_client::interfaces() {
    std::vector<if_index_t> existing;
    const auto brief = brief_ports();
    for (const pm_port_info_brief_t &port : brief.all()) existing.push_back(if_index_t{port.if_index});
    return existing;
}

std::vector<pm_port_info_t> switch_client::ports(const paging &by) {
    std::vector<if_index_t> existing = interfaces();
    std::vector<pm_port_info_t> ports;
    ports.reserve(existing.size());
    add_ports_of_pages(connection_, every_interface, consecutive_pages(std::move(existing), by.ports_of_page),
                       by.pages_under_way, ports);
    return ports;
}

std::vector<pm_port_info_t> switch_client::ports(const interface_range &range) {
    std::vector<pm_port_info_t> ports;
    add_ports_of_pages(connection_, range.text(), range_pages(range), paging().pages_under_way, ports);
    if (ports.empty()) throw query_refused(fmt::format("no such interface: {}", range.text()));
    return ports;
}

std::vector<pm_port_info_t> switch_client::ports_of_module(uint8_t module) {
    const std::string subject = fmt::format("module {}", module);
    bool exists = false;
    std::vector<pm_port_info_t> ports;
    for (const uint8_t type : slot_port_types) {
        record_array<pm_port_info_t> found;
        pm_port_info_t *records = nullptr;
        const uint32_t status = pm_cmi_get_module_interface_listing(connection_.handle(), module, first_of_type(type),
                                                                    usual_wait, &found.count, &records);
        if (status == PM_ERR_INVALID_RANGE) continue;
        connection_.check_exchange(subject, status);
        exists = true;
        found.records.reset(records);
        ports.insert(ports.end(), found.all().begin(), found.all().end());
    }
    if (!exists) throw query_refused(fmt::format("no such module: {}", module));
    return ports;
}

template <typename Record>
record_array<Record> switch_client::query(const std::string &subject, const request_function &request,
                                          parse_function<Record> parse) {
    mts_msg_t response{};
    connection_.check_request(subject, request(connection_.handle(), &response));
    const owned_message message(connection_.handle(), response);
    uint32_t count = 0;
    Record *records = nullptr;
    switch_connection::check_answer(subject, parse(message.get(), &count, &records));
    return {std::unique_ptr<Record[], free_block>(records), count};
}

}  // namespace pmctl
