// SPDX-License-Identifier: Apache-2.0
#include "switch/switch_client.h"

#include <fmt/core.h>

#include "failure.h"
#include "platform_dev/if_index_dev.h"
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

port_mgr::records<pm_port_info_brief_t> switch_client::brief_ports() {
    return checked(connection_, every_interface, port_mgr::get_all_port_info_brief(connection_.handle()));
}

std::vector<if_index_t> switch_client::interfaces() {
    std::vector<if_index_t> existing;
    for (const pm_port_info_brief_t &port : brief_ports()) existing.push_back(if_index_t{port.if_index});
    return existing;
}

std::vector<pm_port_info_t> switch_client::ports(const port_mgr::paging &by) {
    return ports_of(port_mgr::all_ports(connection_.handle(), by), every_interface);
}

std::vector<pm_port_info_t> switch_client::ports(const interface_range &range) {
    auto ports = ports_of(port_mgr::port_pages(connection_.handle(), range_pages(range)), range.text());
    if (ports.empty()) throw query_refused(fmt::format("no such interface: {}", range.text()));
    return ports;
}

std::vector<pm_port_info_t> switch_client::ports_of_module(uint8_t module) {
    const std::string subject = fmt::format("module {}", module);
    bool exists = false;
    std::vector<pm_port_info_t> ports;
    for (const uint8_t type : slot_port_types) {
        auto found = port_mgr::get_module_interface_listing(connection_.handle(), module, first_of_type(type));
        if (found.why().value() == PM_ERR_INVALID_RANGE) continue;
        exists = true;
        const auto listed = checked(connection_, subject, std::move(found));
        ports.insert(ports.end(), listed.begin(), listed.end());
    }
    if (!exists) throw query_refused(fmt::format("no such module: {}", module));
    return ports;
}

std::vector<pm_port_info_t> switch_client::ports_of(port_mgr::port_pages pages, const std::string &subject) {
    std::vector<pm_port_info_t> ports;
    ports.reserve(pages.reserve_hint());
    for (const pm_port_info_t &port : pages) ports.push_back(port);
    connection_.check(subject, pages.why());
    return ports;
}

}  // namespace pmctl
