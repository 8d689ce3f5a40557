// SPDX-License-Identifier: Apache-2.0
// The configuration of the switch: asked for, and changed.
#ifndef PMCTL_SWITCH_CONFIGURATION_H
#define PMCTL_SWITCH_CONFIGURATION_H

#include <map>
#include <optional>
#include <span>

#include "port_mgr/port_info_record.h"
#include "switch/interface_pages.h"
#include "switch/switch_connection.h"

namespace pmctl {

// An attribute and its value in host memory.
struct attribute_value {
    uint8_t attribute;
    std::vector<std::byte> bytes;
};

// What became of interfaces: a status, or nothing where no service said anything.
using change_results = std::map<if_index_t, std::optional<port_mgr::status>>;

// Who uses the program.
std::string user_name();

// Every request throws switch_unavailable, or query_refused when only this one was answered with no.
class configuration {
  public:
    // How the interfaces of a page that exist are configured.
    std::vector<pm_port_info_t> ports(const interface_page &page);

    // What exists of a range. No port at all is a refusal.
    std::vector<pm_port_info_t> ports(const interface_range &range);

    // Adds what became of each interface of the page.
    void set(const interface_page &page, const attribute_value &value, change_results &results);

    // These create or delete the interfaces of a range, and return the service's status.
    port_mgr::status config_sub_interfaces(const interface_range &range, bool creates);
    port_mgr::status config_loopbacks(const interface_range &range, bool creates);

  private:
    std::vector<pm_port_info_t> ask(const std::string &subject, std::span<const pm_if_index_range_t> ranges);
    template <typename Function>
    port_mgr::status config(const interface_range &range, bool creates, uint32_t kinds, Function function);

    switch_connection connection_;
    std::string user_ = user_name();
};

}  // namespace pmctl

#endif
