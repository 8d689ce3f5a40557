// SPDX-License-Identifier: Apache-2.0
// What lies in the run-time directory under the names that a service takes: modes, and what others put there while they
// could.
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "test_service.h"

namespace transport_test {

namespace {

struct stat status_of(const std::string &path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

class planted_files : public transport {
  protected:
    planted_files() {
        std::ofstream(victim) << "untouched";
        EXPECT_EQ(chmod(victim.c_str(), 0644), 0);
    }
    ~planted_files() override {
        std::ifstream content(victim);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(content), {}), "untouched");
        EXPECT_EQ(status_of(victim).st_mode, S_IFREG | 0644u);
    }

    void expect_served() const {
        const service_thread service;
        const open_handle handle;
        EXPECT_EQ(exchange(handle, echo, "there"), "there");
        EXPECT_TRUE(S_ISSOCK(status_of(socket).st_mode));
    }

    static void expect_not_served(int error) {
        mts_server_t *server = mts_server_create();
        errno = 0;
        EXPECT_EQ(mts_server_add_service(
                      server, node, sap, [](void *, const mts_request_t *, mts_reply_t *) {}, nullptr),
                  -1);
        EXPECT_EQ(errno, error);
        mts_server_destroy(server);
    }

    const std::string victim = file("victim");
    const std::string socket = file("fe000000-43");
    const std::string lock = socket + ".lock";
};

TEST_F(planted_files, have_their_modes_whatever_the_umask) {
    for (const mode_t mask : {0u, 022u, 0777u}) {
        const mode_t before = umask(mask);
        const test_server server;
        umask(before);
        EXPECT_EQ(status_of(socket).st_mode, S_IFSOCK | 0600u) << mask;
        EXPECT_EQ(status_of(lock).st_mode, S_IFREG | 0600u) << mask;
        std::filesystem::remove(lock);
    }
}

TEST_F(planted_files, have_the_group_of_a_shared_directory) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    ASSERT_EQ(chown(directory().c_str(), 0, 62000), 0);
    for (const mode_t mode : {0710u, 02750u}) {
        ASSERT_EQ(chmod(directory().c_str(), mode), 0);
        for (const mode_t mask : {0u, 077u, 0777u}) {
            const mode_t before = umask(mask);
            const test_server server;
            umask(before);
            EXPECT_EQ(status_of(socket).st_mode, S_IFSOCK | 0660u) << mask;
            EXPECT_EQ(status_of(socket).st_gid, 62000u) << mask;
            EXPECT_EQ(status_of(lock).st_mode, S_IFREG | 0600u) << mask;
        }
    }
}

TEST_F(planted_files, at_the_sockets_place_are_replaced) {
    std::filesystem::create_symlink("victim", socket);
    expect_served();
    std::filesystem::create_hard_link(victim, socket);
    expect_served();
    ASSERT_EQ(mkfifo(socket.c_str(), 0666), 0);
    expect_served();
    std::filesystem::create_symlink("/nowhere/at/all", socket);
    expect_served();
}

TEST_F(planted_files, directory_at_the_sockets_place_is_refused) {
    std::filesystem::create_directory(socket);
    expect_not_served(EISDIR);
}

TEST_F(planted_files, at_the_locks_place_are_refused) {
    std::filesystem::create_symlink("victim", lock);
    expect_not_served(ELOOP);
    std::filesystem::remove(lock);
    std::filesystem::create_hard_link(victim, lock);
    expect_not_served(EPERM);
    std::filesystem::remove(lock);
    ASSERT_EQ(mkfifo(lock.c_str(), 0600), 0);
    expect_not_served(EPERM);
    std::filesystem::remove(lock);
    std::filesystem::create_directory(lock);
    expect_not_served(EISDIR);
    std::filesystem::remove(lock);
    expect_served();
}

TEST_F(planted_files, of_another_user_at_the_sockets_place_are_replaced) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    std::ofstream(socket) << "planted";
    ASSERT_EQ(chown(socket.c_str(), 61001, 62001), 0);
    expect_served();
}

TEST_F(planted_files, of_another_user_at_the_locks_place_are_refused) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    std::ofstream(lock) << "planted";
    ASSERT_EQ(chown(lock.c_str(), 61001, 62001), 0);
    expect_not_served(EPERM);
}

}  // namespace

}  // namespace transport_test
