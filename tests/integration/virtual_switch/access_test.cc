// SPDX-License-Identifier: Apache-2.0
// Who may ask the running daemon, and who may configure it.
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

#include "configuration_client.h"
#include "platform/pdb.h"
#include "port_mgr/status.h"
#include "support/other_user.h"
#include "support/public_copies.h"

namespace {

using support::other_user;
using support::run_as;

// Numbers that no group of this machine has.
constexpr gid_t admins = 62000;
constexpr gid_t operators = 62001;
const other_user admin{61000, 62010, {admins}};
const other_user admin_by_login{61001, admins, {}};
const other_user senior{61002, 62010, {operators, admins}};
const other_user junior{61003, 62010, {operators}};
const other_user stranger{61004, 62010, {62011}};

const std::vector<std::string> for_admins{"--config-group", std::to_string(admins)};

class access_test : public runtime_dir_test {
  protected:
    void SetUp() override {
        if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    }

    [[nodiscard]] std::string path() const { return directory_.file("."); }

    void share(gid_t group, mode_t mode = 0750) const {
        ASSERT_EQ(chown(path().c_str(), 0, group), 0);
        ASSERT_EQ(chmod(path().c_str(), mode), 0);
    }

    [[nodiscard]] struct stat status() const {
        struct stat found {};
        EXPECT_EQ(stat(path().c_str(), &found), 0);
        return found;
    }
};

// Each request that configures, and what it changes.
void expect_configured() {
    const configuration_client client;
    EXPECT_EQ(client.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 2)).status, 0u);
    EXPECT_EQ(client.record("fc1/3").admin_state, 2);
    EXPECT_EQ(client.config_sub_interfaces(true, {range_of("Ethernet2/3.20", "Ethernet2/3.20")}), 0u);
    EXPECT_TRUE(client.exists("Ethernet2/3.20"));
    EXPECT_EQ(client.config_loopbacks(true, {range_of("loopback5", "loopback5")}), 0u);
    EXPECT_TRUE(client.exists("loopback5"));
    EXPECT_EQ(client.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 1)).status, 0u);
    EXPECT_EQ(client.config_sub_interfaces(false, {range_of("Ethernet2/3.20", "Ethernet2/3.20")}), 0u);
    EXPECT_EQ(client.config_loopbacks(false, {range_of("loopback5", "loopback5")}), 0u);
}

// The queries are answered all the same, and nothing changes.
void expect_refused() {
    const configuration_client client;
    EXPECT_EQ(client.set("fc1/3", byte_value(PM_ATTR_ADMIN_STATE, 2)), (set_outcome{PM_ERR_REJECTED, {}}));
    EXPECT_EQ(client.record("fc1/3").admin_state, 1);
    EXPECT_EQ(client.config_sub_interfaces(true, {range_of("Ethernet2/3.20", "Ethernet2/3.20")}), PM_ERR_REJECTED);
    EXPECT_FALSE(client.exists("Ethernet2/3.20"));
    EXPECT_EQ(client.config_loopbacks(false, {range_of("loopback1", "loopback1")}), PM_ERR_REJECTED);
    EXPECT_TRUE(client.exists("loopback1"));
    EXPECT_EQ(client.configuration({range_of("fc1/3", "fc1/3")}).records.size(), 1u);
    uint32_t type = 0;
    EXPECT_EQ(pdb_get_chassis_type(&type), 0) << "the database is theirs to read";
}

void expect_kept_out() {
    const configuration_client client;
    EXPECT_EQ(client.range("fc1/3", "fc1/3").status, static_cast<uint32_t>(EACCES));
    EXPECT_EQ(client.config_loopbacks(true, {range_of("loopback5", "loopback5")}), static_cast<uint32_t>(EACCES));
    uint32_t type = 0;
    EXPECT_NE(pdb_get_chassis_type(&type), 0);
}

void expect_three_lines(child_process &daemon, const std::string &ending) {
    for (const std::string what : {"attributes of ports", "sub-interfaces", "loopbacks"}) {
        EXPECT_EQ(daemon.read_line(child_process::standard_error),
                  "pm-virtual-switch: configuration refused: " + what + ": user " + ending);
    }
}

TEST_F(access_test, members_of_the_group_configure_and_others_stay_outside) {
    const virtual_switch_process daemon(every_kind, for_admins);
    EXPECT_THAT(daemon.ready_line(), testing::EndsWith(", shared with group 62000, configured by group 62000"));
    EXPECT_EQ(status().st_mode & 07777, 02710u);
    EXPECT_EQ(status().st_gid, admins);
    for (const other_user &user : {admin, admin_by_login, senior}) run_as(user, expect_configured);
    for (const other_user &user : {junior, stranger}) run_as(user, expect_kept_out);
    expect_configured();
}

TEST_F(access_test, wider_group_that_the_directory_is_shared_with_asks_only) {
    share(operators);
    virtual_switch_process daemon(every_kind, for_admins);
    EXPECT_THAT(daemon.ready_line(), testing::EndsWith(", shared with group 62001, configured by group 62000"));
    EXPECT_EQ(status().st_mode & 07777, 0750u) << "it stays as its owner made it";
    EXPECT_EQ(status().st_gid, operators);
    run_as(senior, expect_configured);
    run_as(junior, expect_refused);
    expect_three_lines(daemon, "61003 is not in group 62000");
    for (const other_user &user : {admin, stranger}) run_as(user, expect_kept_out);
}

TEST_F(access_test, nobody_else_configures_without_a_group) {
    share(operators);
    virtual_switch_process daemon(every_kind);
    EXPECT_THAT(daemon.ready_line(), testing::Not(testing::HasSubstr("group")));
    run_as(senior, expect_refused);
    expect_three_lines(daemon, "61002 is neither root nor the switch's own, and no group was given");
    expect_configured();
}

TEST_F(access_test, private_directory_without_a_group_stays_private) {
    const virtual_switch_process daemon(every_kind);
    EXPECT_EQ(status().st_mode & 07777, 0700u);
    for (const other_user &user : {admin, stranger}) run_as(user, expect_kept_out);
}

TEST_F(access_test, refusal_keeps_the_state_file_as_it_is) {
    share(operators);
    const std::string state_file = directory_.file("state.toml");
    std::ofstream(state_file) << "# Written by hand.\n";
    const virtual_switch_process daemon(every_kind, {"--state", state_file});
    run_as(junior, expect_refused);
    std::ifstream kept(state_file);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(kept), {}), "# Written by hand.\n");
}

TEST_F(access_test, group_stays_through_a_reload) {
    share(operators);
    virtual_switch_process daemon(every_kind, for_admins);
    daemon.send(SIGHUP);
    run_as(senior, expect_configured);
    run_as(junior, expect_refused);
    expect_three_lines(daemon, "61003 is not in group 62000");
}

TEST_F(access_test, shared_directory_is_given_to_the_next_daemon) {
    { const virtual_switch_process daemon(every_kind, for_admins); }
    const virtual_switch_process daemon(every_kind, for_admins);
    EXPECT_THAT(daemon.ready_line(), testing::EndsWith(", shared with group 62000, configured by group 62000"));
    run_as(admin, expect_configured);
}

TEST_F(access_test, daemon_that_finds_another_one_shares_nothing) {
    const virtual_switch_process first(every_kind);
    child_process second({PM_VIRTUAL_SWITCH, "--config-group", std::to_string(admins), every_kind});
    EXPECT_THAT(second.read_line(child_process::standard_error), testing::HasSubstr("another instance serves"));
    EXPECT_EQ(second.wait(), 1);
    EXPECT_EQ(status().st_mode & 07777, 0700u);
    run_as(admin, expect_kept_out);
}

// A daemon of a user without rights, in a run-time directory of its own.
class users_daemon : public access_test {
  protected:
    [[nodiscard]] std::vector<std::string> command(const other_user &user, gid_t config_group) const {
        return command_as(user, {copies_.program(PM_VIRTUAL_SWITCH), "--config-group", std::to_string(config_group),
                                 copies_.file(every_kind)});
    }

    void SetUp() override {
        access_test::SetUp();
        if (IsSkipped()) return;
        ASSERT_EQ(chown(path().c_str(), owner.uid, owner.gid), 0);
    }

    const other_user owner{61005, 62012, {admins}};

  private:
    support::public_copies copies_;
};

TEST_F(users_daemon, serves_its_user_root_and_the_group) {
    child_process daemon(command(owner, admins));
    ASSERT_THAT(daemon.read_line(child_process::standard_output), testing::StartsWith("pm-virtual-switch: ready: "));
    EXPECT_EQ(status().st_uid, owner.uid);
    EXPECT_EQ(status().st_gid, admins);
    expect_configured();
    for (const other_user &user : {owner, admin, senior}) run_as(user, expect_configured);
    for (const other_user &user : {junior, stranger}) run_as(user, expect_kept_out);
}

TEST_F(users_daemon, cannot_share_with_a_group_that_it_is_no_member_of) {
    child_process daemon(command(owner, operators));
    EXPECT_EQ(daemon.read_line(child_process::standard_error),
              "pm-virtual-switch: run-time directory " + std::string(std::getenv("MTS_RUNTIME_DIR")) +
                  " cannot be shared with group 62001: Operation not permitted");
    EXPECT_EQ(daemon.wait(), 1);
    EXPECT_EQ(status().st_mode & 07777, 0700u);
    EXPECT_EQ(status().st_gid, owner.gid);
}

TEST_F(users_daemon, does_not_serve_in_the_directory_of_another_user) {
    share(admins);
    child_process daemon(command(owner, admins));
    EXPECT_THAT(daemon.read_line(child_process::standard_error), testing::EndsWith(": Operation not permitted"));
    EXPECT_EQ(daemon.wait(), 1);
}

}  // namespace
