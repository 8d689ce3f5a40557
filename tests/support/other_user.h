// SPDX-License-Identifier: Apache-2.0
// other_user.h: parts of a test that another user does. Only root can run them: the other tests skip.
#ifndef SUPPORT_OTHER_USER_H
#define SUPPORT_OTHER_USER_H

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace support {

struct other_user {
    uid_t uid;
    gid_t gid;
    std::vector<gid_t> groups;  // the supplementary ones
};

inline constexpr const char *only_root = "only root can act as other users";

// Whether this process can.
bool can_be_others();

// Makes this process, for good, one of the user's. Returns false with errno.
[[nodiscard]] bool become(const other_user &user);

// Runs part of a test as the user in a child of this process, which starts out as its copy, and waits for its end. What
// fails there is shown and fails the test.
void run_as(const other_user &user, const std::function<void()> &part);

// The command that runs a program as the user.
std::vector<std::string> command_as(const other_user &user, const std::vector<std::string> &command);

}  // namespace support

#endif
