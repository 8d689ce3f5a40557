// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_pages.h"

#include <algorithm>
#include <set>

#include <fmt/core.h>

#include "platform_dev/if_index_dev.h"
#include "port_mgr/cpp/port_pages.hpp"
#include "port_mgr/service_selection.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

constexpr size_t page_interfaces = 64;
constexpr uint32_t members_of_page{port_mgr::paging().ports_of_page};
constexpr uint16_t last_sub_number = 4095;

// The end of a page of a range. A member's sub-interfaces follow it, and none may fall between two pages.
if_index_t end_of_page(const interface_range &range, uint32_t begin) {
    if (range.count() - begin <= members_of_page) return range.last();
    const if_index_t member = range.member(begin + members_of_page - 1);
    if_index_t last_sub_interface;
    return if_index_sub_intf_init(&last_sub_interface, member, last_sub_number) == 0 ? last_sub_interface : member;
}

// What decides about the way of a request.
struct owner {
    uint8_t type;
    bool is_sub_interface;
    uint32_t service;

    bool operator==(const owner &) const = default;
};

owner owner_of(if_index_t index) { return {interface_type(index), is_sub_interface(index), pm_get_mts_sap(index)}; }

// A page under construction.
struct owned_page {
    owner of;
    interface_page interfaces;
};

}  // namespace

std::vector<pm_if_index_range_t> range_pages(const interface_range &range) {
    std::vector<pm_if_index_range_t> pages;
    for (uint32_t begin = 0; begin < range.count(); begin += members_of_page)
        pages.push_back({range.member(begin), end_of_page(range, begin)});
    return pages;
}

std::vector<interface_page> owner_pages(const std::vector<if_index_t> &interfaces) {
    std::vector<owned_page> pages;
    std::set<if_index_t> seen;
    for (const if_index_t index : interfaces) {
        if (!seen.insert(index).second) continue;
        const owner of = owner_of(index);
        const auto found = std::find_if(pages.begin(), pages.end(), [&of](const owned_page &page) {
            return page.interfaces.size() < page_interfaces && page.of == of;
        });
        owned_page &page = found == pages.end() ? pages.emplace_back(owned_page{of, {}}) : *found;
        page.interfaces.push_back({index, index});
    }
    std::vector<interface_page> finished;
    for (owned_page &page : pages) finished.push_back(std::move(page.interfaces));
    return finished;
}

std::string page_name(const interface_page &page) {
    const std::string first = interface_name(page.front().first);
    return page.size() == 1 ? first : fmt::format("{} and {} more", first, page.size() - 1);
}

}  // namespace pmctl
