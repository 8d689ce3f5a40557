// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_client.h"

#include <fmt/core.h>

#include "failure.h"
#include "port_mgr/port_info_request.h"
#include "port_mgr/status.h"
#include "switch/interface_pages.h"

namespace pmctl {
namespace {

constexpr const char *every_interface = "all interfaces";

// A page of a range of which nothing exists is empty.
uint32_t parse_page(const mts_msg_t *message, uint32_t *count, pm_port_info_t **ports) {
    const uint32_t status = pm_parse_get_port_info(message, count, ports);
    return status == PM_ERR_INVALID_RANGE ? 0 : status;
}

}  // namespace

record_array<pm_port_info_brief_t> switch_client::brief_ports() {
    const auto request = [](mts_handle_t handle, mts_msg_t *response) {
        return pm_get_port_info_brief(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    };
    return query<pm_port_info_brief_t>(every_interface, request, pm_parse_get_port_info_brief);
}

record_array<pm_port_info_t> switch_client::ports() {
    const auto request = [](mts_handle_t handle, mts_msg_t *response) {
        return pm_get_port_info(handle, PM_PORT_INFO_MODE_ALL, 0, 0, 0, 0, 0, nullptr, response);
    };
    return query<pm_port_info_t>(every_interface, request, pm_parse_get_port_info);
}

std::vector<pm_port_info_t> switch_client::ports(const interface_range &range) {
    std::vector<pm_port_info_t> ports;
    for (const pm_if_index_range_t &page : range_pages(range)) {
        const auto request = [&page](mts_handle_t handle, mts_msg_t *response) {
            return pm_get_port_info_range(handle, page.first, page.last, response);
        };
        const auto found = query<pm_port_info_t>(range.text(), request, parse_page);
        ports.insert(ports.end(), found.all().begin(), found.all().end());
    }
    if (ports.empty()) throw query_refused(fmt::format("no such interface: {}", range.text()));
    return ports;
}

template <typename Record>
record_array<Record> switch_client::query(const std::string &subject, const request_function &request,
                                          parse_function<Record> parse) {
    mts_msg_t response{};
    connection_.check_request(subject, request(connection_.handle(), &response));
    const received_message message(connection_.handle(), response);
    uint32_t count = 0;
    Record *records = nullptr;
    switch_connection::check_answer(subject, parse(message.get(), &count, &records));
    return {std::unique_ptr<Record[], free_block>(records), count};
}

}  // namespace pmctl
