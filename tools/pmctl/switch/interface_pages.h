// SPDX-License-Identifier: Apache-2.0
// Requests about many interfaces are sent in pages, so that neither they nor their answers grow without limit.
#ifndef PMCTL_SWITCH_INTERFACE_PAGES_H
#define PMCTL_SWITCH_INTERFACE_PAGES_H

#include <vector>

#include "port_mgr/types.h"
#include "switch/interface_ranges.h"

namespace pmctl {

// A range in parts of at most as many ports as a request for full records names; the sub-interfaces between them are in
// no two of them, and in none too few.
std::vector<pm_if_index_range_t> range_pages(const interface_range &range);

// Single interfaces, of which one request can be about all: each is a range of its own.
using interface_page = std::vector<pm_if_index_range_t>;

// The first interface of a request decides where it goes. So pages hold at most 64 interfaces of one kind and one
// service, in the order of the first of each; an interface that is named twice is in them once.
std::vector<interface_page> owner_pages(const std::vector<if_index_t> &interfaces);

// "fc1/1" or "fc1/1 and 15 more".
std::string page_name(const interface_page &page);

}  // namespace pmctl

#endif
