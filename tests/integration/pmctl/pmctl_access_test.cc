// SPDX-License-Identifier: Apache-2.0
// What the client tells users whom the switch does not let in, or does not let configure.
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <cstdlib>
#include <cstring>

#include "integration/pmctl/pmctl_program.h"
#include "support/other_user.h"
#include "support/public_copies.h"

namespace {

using support::other_user;

constexpr gid_t admins = 62000;
constexpr gid_t operators = 62001;
const other_user senior{61002, 62010, {operators, admins}};
const other_user junior{61003, 62010, {operators}};
const other_user stranger{61004, 62010, {}};

class pmctl_access : public pmctl_alone {
  protected:
    void SetUp() override {
        if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    }

    void share() const {
        ASSERT_EQ(chown(path().c_str(), 0, operators), 0);
        ASSERT_EQ(chmod(path().c_str(), 0710), 0);
    }

    [[nodiscard]] run_result pmctl_as(const other_user &user, std::vector<std::string> words) const {
        words.insert(words.begin(), copies_.program(PMCTL));
        return run_program(command_as(user, words));
    }

    static std::string path() { return std::getenv("MTS_RUNTIME_DIR"); }

  private:
    support::public_copies copies_;
};

TEST_F(pmctl_access, configures_for_members_and_shows_to_the_others) {
    share();
    const virtual_switch_process daemon(director, {"--config-group", std::to_string(admins)});
    EXPECT_EQ(pmctl_as(senior, {"config", "interface", "fc1/1", "description", "by a member"}).status, 0);
    const run_result shown = pmctl_as(junior, {"show", "interface", "fc1/1"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_EQ(shown.messages, "");
    EXPECT_THAT(shown.output, testing::HasSubstr("by a member"));
    EXPECT_EQ(pmctl_as(junior, {"clear", "counters", "Ethernet4/1"}).status, 0);
}

TEST_F(pmctl_access, tells_who_may_not_configure) {
    share();
    const virtual_switch_process daemon(director, {"--config-group", std::to_string(admins)});
    const std::string rejected = "request rejected (PM_ERR_REJECTED, 0x40290009)\n";
    const run_result set = pmctl_as(junior, {"config", "interface", "fc1/1-4,Ethernet4/1", "shutdown"});
    EXPECT_EQ(set.status, 1);
    EXPECT_EQ(set.messages, "pmctl: the switch takes no configuration from uid 61003: " + rejected);
    const run_result created = pmctl_as(junior, {"config", "subinterface", "create", "Ethernet4/1.10"});
    EXPECT_EQ(created.status, 1);
    EXPECT_EQ(created.messages,
              "pmctl: Ethernet4/1.10: the switch takes no configuration from uid 61003, or no more "
              "such interfaces: " +
                  rejected);
    const run_result deleted = pmctl_as(junior, {"config", "loopback", "delete", "loopback1"});
    EXPECT_EQ(deleted.status, 1);
    EXPECT_EQ(deleted.messages,
              "pmctl: loopback1: the switch takes no configuration from uid 61003, or no more such "
              "interfaces: " +
                  rejected);
}

TEST_F(pmctl_access, tells_a_stranger_what_to_do) {
    share();
    const virtual_switch_process daemon(director);
    const run_result kept_out = pmctl_as(stranger, {"show", "interface", "fc1/1"});
    EXPECT_EQ(kept_out.status, 1);
    EXPECT_EQ(kept_out.output, "");
    EXPECT_EQ(kept_out.messages,
              "pmctl: the switch in " + path() +
                  " is for its owner, root and the group that it is shared with: ask its owner to start it with "
                  "--config-group, and to add you to the group\n");
}

TEST_F(pmctl_access, believes_no_impostor) {
    const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    directory_.file("fe000000-43").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
    support::run_as(stranger, [listener] { EXPECT_EQ(listen(listener, 8), 0); });
    const run_result doubted = pmctl({"show", "interface", "fc1/1"});
    close(listener);
    EXPECT_EQ(doubted.status, 1);
    EXPECT_EQ(doubted.messages, "pmctl: what serves in " + path() +
                                    " does not run as the owner of that directory, so it is not believed\n");
}

TEST_F(pmctl_access, refuses_a_directory_that_others_write_to) {
    ASSERT_EQ(chmod(path().c_str(), 0770), 0);
    const run_result refused = pmctl({"show", "interface", "fc1/1"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.messages, "pmctl: cannot open the message transport in " + path() +
                                    ": it must be your own, or named by MTS_RUNTIME_DIR, with mode 0700, or 0710 or "
                                    "0750 to share it with its group\n");
}

}  // namespace
