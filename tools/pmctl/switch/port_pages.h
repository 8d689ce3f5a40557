// SPDX-License-Identifier: Apache-2.0
// Full records of many ports, asked for in pages.
#ifndef PMCTL_SWITCH_PORT_PAGES_H
#define PMCTL_SWITCH_PORT_PAGES_H

#include <span>
#include <string>
#include <vector>

#include "port_mgr/port_info_record.h"
#include "switch/interface_pages.h"
#include "switch/switch_connection.h"

namespace pmctl {

// How ports are asked for. A port costs its share of its page's round trip, and a look at every element of its page: so
// small pages cost round trips and large ones the square of their size. Requests ahead of the answers spare both sides
// the waiting.
struct paging {
    size_t ports_of_page = members_of_page;
    size_t pages_under_way = 4;
};

// Adds to `ports` what exists of the ranges, in their order; a range of which nothing exists adds nothing. `subject` is
// what messages name as asked about. Throws as a query does, for the first range that fails.
void add_ports_of_pages(const switch_connection &connection, const std::string &subject,
                        std::span<const pm_if_index_range_t> pages, size_t pages_under_way,
                        std::vector<pm_port_info_t> &ports);

}  // namespace pmctl

#endif
