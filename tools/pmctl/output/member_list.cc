// SPDX-License-Identifier: Apache-2.0
#include "output/member_list.h"

namespace pmctl {
namespace {

void add_group(sheet &list, const member_group &group, std::span<const std::byte> record) {
    list.rows.push_back({{std::string(group.title)}});
    for (const record_member &member : group.members)
        list.rows.push_back({{std::string(member.label)}, display_cell(member, record)});
}

}  // namespace

std::vector<sheet> member_sheets(std::span<const member_group> groups, const record_list &records) {
    std::vector<sheet> sheets;
    for (const auto &record : records) {
        sheet &list = sheets.emplace_back();
        list.title = display_text(groups.front().members.front(), record);
        for (const member_group &group : groups) add_group(list, group, record);
    }
    return sheets;
}

}  // namespace pmctl
