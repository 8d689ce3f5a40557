// SPDX-License-Identifier: Apache-2.0
// Where the run-time directory is, and which one is refused.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "test_service.h"

namespace transport_test {

namespace {

class runtime_directory : public transport {
  protected:
    ~runtime_directory() override {
        unsetenv("XDG_RUNTIME_DIR");
        setenv("MTS_RUNTIME_DIR", directory().c_str(), 1);
    }

    static std::string found() {
        char path[256] = "";
        EXPECT_EQ(mts_dev_runtime_dir(path, sizeof path), 0);
        return path;
    }

    static void expect_not_served(int error) {
        errno = 0;
        EXPECT_EQ(mts_server_create(), nullptr);
        EXPECT_EQ(errno, error);
    }

    // That neither side works there.
    static void expect_refused(const std::string &path, int error) {
        setenv("MTS_RUNTIME_DIR", path.c_str(), 1);
        expect_refused(error);
    }
    static void expect_refused(int error) {
        char room[256];
        errno = 0;
        EXPECT_EQ(mts_dev_runtime_dir(room, sizeof room), -1);
        EXPECT_EQ(errno, error);
        errno = 0;
        EXPECT_EQ(mts_dev_open(), 0u);
        EXPECT_EQ(errno, error);
        expect_not_served(error);
    }
};

TEST_F(runtime_directory, is_created_for_its_owner_only) {
    setenv("MTS_RUNTIME_DIR", file("new").c_str(), 1);
    EXPECT_EQ(found(), file("new"));
    struct stat status {};
    ASSERT_EQ(stat(file("new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700u);
}

TEST_F(runtime_directory, lies_in_the_users_own_without_a_choice) {
    unsetenv("MTS_RUNTIME_DIR");
    setenv("XDG_RUNTIME_DIR", directory().c_str(), 1);
    EXPECT_EQ(found(), file("port_mgr"));
}

TEST_F(runtime_directory, open_to_others_is_refused) {
    for (const mode_t mode : {0701, 0704, 0702, 0720, 0730, 0770, 0777, 01777}) {
        ASSERT_EQ(chmod(directory().c_str(), mode), 0);
        expect_refused(directory(), EPERM);
    }
}

TEST_F(runtime_directory, shared_with_its_group_serves) {
    for (const mode_t mode : {0700, 0710, 0750, 02710, 02750}) {
        ASSERT_EQ(chmod(directory().c_str(), mode), 0);
        const service_thread service;
        const open_handle handle;
        EXPECT_EQ(exchange(handle, echo, "there"), "there");
    }
}

TEST_F(runtime_directory, of_another_user_is_for_clients_that_name_it) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    ASSERT_EQ(chown(directory().c_str(), 61001, 62001), 0);
    EXPECT_EQ(found(), directory());
    const open_handle handle;
    expect_not_served(EPERM);
    ASSERT_EQ(chmod(directory().c_str(), 0770), 0);
    expect_refused(directory(), EPERM);
}

// Another user may have been first in /tmp, or in a directory for users that a variable was inherited with.
TEST_F(runtime_directory, of_another_user_is_refused_where_it_is_by_default) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    unsetenv("MTS_RUNTIME_DIR");
    setenv("XDG_RUNTIME_DIR", directory().c_str(), 1);
    ASSERT_EQ(mkdir(file("port_mgr").c_str(), 0700), 0);
    ASSERT_EQ(chown(file("port_mgr").c_str(), 61001, 62001), 0);
    expect_refused(EPERM);
}

TEST_F(runtime_directory, in_tmp_that_another_user_made_is_refused) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const std::string planted = "/tmp/port_mgr-61007";
    ASSERT_EQ(mkdir(planted.c_str(), 0700), 0) << "left by another run";
    EXPECT_EQ(chown(planted.c_str(), 61001, 62001), 0);
    support::run_as({61007, 62007, {}}, [] {
        unsetenv("MTS_RUNTIME_DIR");
        expect_refused(EPERM);
    });
    std::filesystem::remove(planted);
}

TEST_F(runtime_directory, is_shared_with_a_group_by_its_owner) {
    const gid_t own = getegid();
    uint32_t group = own;
    ASSERT_EQ(mts_dev_share_runtime_dir(&group), 0);
    EXPECT_EQ(group, own);
    struct stat status {};
    ASSERT_EQ(stat(directory().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 02710u);
    EXPECT_EQ(status.st_gid, own);
}

TEST_F(runtime_directory, that_is_shared_stays_as_it_is) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    ASSERT_EQ(chown(directory().c_str(), 0, 62001), 0);
    ASSERT_EQ(chmod(directory().c_str(), 0750), 0);
    uint32_t group = 62002;
    ASSERT_EQ(mts_dev_share_runtime_dir(&group), 0);
    EXPECT_EQ(group, 62001u);
    struct stat status {};
    ASSERT_EQ(stat(directory().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0750u);
    EXPECT_EQ(status.st_gid, 62001u);
}

TEST_F(runtime_directory, is_shared_by_nobody_else_and_with_no_foreign_group) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const auto refusal_of = [](uint32_t group) { return mts_dev_share_runtime_dir(&group) == 0 ? 0 : errno; };
    ASSERT_EQ(chown(directory().c_str(), 61001, 62001), 0);
    EXPECT_EQ(refusal_of(62001), EPERM) << "root does not serve in another user's directory";
    support::run_as({61001, 62001, {62002}}, [&] {
        EXPECT_EQ(refusal_of(62003), EPERM);
        EXPECT_EQ(refusal_of(62002), 0);
    });
    struct stat status {};
    ASSERT_EQ(stat(directory().c_str(), &status), 0);
    EXPECT_EQ(status.st_gid, 62002u);
}

TEST_F(runtime_directory, behind_a_symbolic_link_is_refused) {
    std::filesystem::create_directory_symlink(directory(), file("link"));
    expect_refused(file("link"), ENOTDIR);
}

TEST_F(runtime_directory, too_long_for_a_socket_is_refused) {
    expect_refused(file(std::string(100, 'x')), ENAMETOOLONG);
    expect_refused(file(std::string(1000, 'x')), ENAMETOOLONG);
}

TEST_F(runtime_directory, as_long_as_possible_serves) {
    const std::string longest = file(std::string(108 - 32 - 1 - directory().size() - 1, 'x'));
    expect_refused(longest + "x", ENAMETOOLONG);
    setenv("MTS_RUNTIME_DIR", longest.c_str(), 1);
    const service_thread service({4294967295u});
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, "there", 4294967295u), "there");
}

TEST_F(runtime_directory, is_named_also_when_it_is_refused) {
    ASSERT_EQ(chmod(directory().c_str(), 0755), 0);
    char path[256] = "";
    errno = 0;
    EXPECT_EQ(mts_dev_runtime_dir(path, sizeof path), -1);
    EXPECT_EQ(errno, EPERM);
    EXPECT_EQ(path, directory());
}

TEST_F(runtime_directory, is_not_taken_from_an_empty_variable) {
    setenv("XDG_RUNTIME_DIR", directory().c_str(), 1);
    setenv("MTS_RUNTIME_DIR", "", 1);
    EXPECT_EQ(found(), directory() + "/port_mgr");
}

TEST_F(runtime_directory, needs_room_for_its_path) {
    char room[256];
    const size_t needed = directory().size() + 1;
    EXPECT_EQ(mts_dev_runtime_dir(room, needed), 0);
    errno = 0;
    EXPECT_EQ(mts_dev_runtime_dir(room, needed - 1), -1);
    EXPECT_EQ(errno, ENAMETOOLONG);
}

}  // namespace

}  // namespace transport_test
