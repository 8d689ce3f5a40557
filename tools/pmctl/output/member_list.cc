// SPDX-License-Identifier: Apache-2.0
#include "output/member_list.h"

#include <algorithm>

#include <fmt/core.h>

namespace pmctl {
namespace {

size_t label_width(std::span<const member_group> groups) {
    size_t width = 0;
    for (const member_group &group : groups)
        for (const record_member &member : group.members) width = std::max(width, member.label.size());
    return width;
}

std::string group_lines(const member_group &group, std::span<const std::byte> record, size_t width) {
    std::string lines = fmt::format("  {}\n", group.title);
    for (const record_member &member : group.members)
        lines += fmt::format("    {:{}}  {}\n", member.label, width, display_text(member, record));
    return lines;
}

}  // namespace

std::string member_lists(std::span<const member_group> groups, const record_list &records) {
    const size_t width = label_width(groups);
    std::string text;
    for (const auto &record : records) {
        if (!text.empty()) text += "\n";
        text += fmt::format("{}\n", display_text(groups.front().members.front(), record));
        for (const member_group &group : groups) text += group_lines(group, record, width);
    }
    return text;
}

}  // namespace pmctl
