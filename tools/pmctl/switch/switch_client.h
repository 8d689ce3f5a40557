// SPDX-License-Identifier: Apache-2.0
// Questions to the switch about its ports.
#ifndef PMCTL_SWITCH_SWITCH_CLIENT_H
#define PMCTL_SWITCH_SWITCH_CLIENT_H

#include <vector>

#include "port_mgr/cpp/port_pages.hpp"
#include "switch/interface_ranges.h"
#include "switch/switch_connection.h"

namespace pmctl {

// Every query throws switch_unavailable, or query_refused when only this question was answered with no.
class switch_client {
  public:
    // Every port in brief.
    port_mgr::records<pm_port_info_brief_t> brief_ports();

    // The index of every port.
    std::vector<if_index_t> interfaces();

    // Every port in full, in the order of their indexes.
    std::vector<pm_port_info_t> ports(const port_mgr::paging &by = {});

    // What exists of a range. No port at all is a refusal.
    std::vector<pm_port_info_t> ports(const interface_range &range);

    // The ports of a module, in the order of their indexes. A module that is not there is a refusal.
    std::vector<pm_port_info_t> ports_of_module(uint8_t module);

  private:
    // `subject` is what messages name as asked about.
    std::vector<pm_port_info_t> ports_of(port_mgr::port_pages pages, const std::string &subject);

    switch_connection connection_;
};

}  // namespace pmctl

#endif
