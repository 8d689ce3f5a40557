// SPDX-License-Identifier: Apache-2.0
#include "other_user.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "fresh_process.h"

namespace support {

bool can_be_others() { return geteuid() == 0; }

// A process that changed its user cannot be traced, as the leak checker does at its end, unless it says otherwise.
bool become(const other_user &user) {
    return setgroups(user.groups.size(), user.groups.data()) == 0 && setresgid(user.gid, user.gid, user.gid) == 0 &&
           setresuid(user.uid, user.uid, user.uid) == 0 && prctl(PR_SET_DUMPABLE, 1) == 0;
}

std::vector<std::string> command_as(const other_user &user, const std::vector<std::string> &command) {
    std::string groups;
    for (const gid_t group : user.groups) groups += (groups.empty() ? "--groups=" : ",") + std::to_string(group);
    std::vector<std::string> whole{"/usr/bin/setpriv", "--reuid=" + std::to_string(user.uid),
                                   "--regid=" + std::to_string(user.gid), groups.empty() ? "--clear-groups" : groups};
    whole.insert(whole.end(), command.begin(), command.end());
    return whole;
}

void run_as(const other_user &user, const std::function<void()> &part) {
    in_fresh_process([&] {
        ASSERT_TRUE(become(user)) << std::strerror(errno);
        part();
    });
}

}  // namespace support
