// SPDX-License-Identifier: Apache-2.0
#include "services/config_access.h"

#include <grp.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>
#include <stdexcept>

namespace virtual_switch {
namespace {

// The greatest number stands for no group.
std::optional<gid_t> group_number(const std::string &text) {
    gid_t number = 0;
    const char *const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end || number == std::numeric_limits<gid_t>::max()) return std::nullopt;
    return number;
}

}  // namespace

user_group find_group(const std::string &name_or_number) {
    if (const group *const found = getgrnam(name_or_number.c_str())) return {found->gr_gid, found->gr_name};
    if (const auto number = group_number(name_or_number)) return group_of(*number);
    throw std::runtime_error("no such group: " + name_or_number);
}

user_group group_of(gid_t id) {
    const group *const found = getgrgid(id);
    return {id, found != nullptr ? found->gr_name : std::to_string(id)};
}

bool config_access::allows(const mts_client_t &client) const {
    if (client.uid == geteuid() || client.uid == 0) return true;
    const std::span groups(client.groups, client.group_count);
    return group_ && std::ranges::find(groups, group_->id) != groups.end();
}

std::string config_access::reason() const {
    return group_ ? "is not in group " + group_->name : "is neither root nor the switch's own, and no group was given";
}

}  // namespace virtual_switch
