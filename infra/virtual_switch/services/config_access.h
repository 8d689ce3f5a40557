// SPDX-License-Identifier: Apache-2.0
// config_access.h: who may configure the switch: its own user, root and the members of one group.
#ifndef VIRTUAL_SWITCH_SERVICES_CONFIG_ACCESS_H
#define VIRTUAL_SWITCH_SERVICES_CONFIG_ACCESS_H

#include <sys/types.h>

#include <optional>
#include <string>

#include "platform_dev/mts_service.h"

namespace virtual_switch {

struct user_group {
    gid_t id;
    std::string name;  // the number where the system has no name
};

// The group of that name, else of that number, which needs no name. Throws std::runtime_error with one line.
user_group find_group(const std::string &name_or_number);

user_group group_of(gid_t id);

class config_access {
  public:
    // Without a group, only the switch's own user and root may.
    config_access(std::optional<user_group> group = std::nullopt) : group_(std::move(group)) {}

    [[nodiscard]] bool allows(const mts_client_t &client) const;

    // Why it does not, as what is said of a user: "is not in group admins".
    [[nodiscard]] std::string reason() const;

  private:
    std::optional<user_group> group_;
};

}  // namespace virtual_switch

#endif
