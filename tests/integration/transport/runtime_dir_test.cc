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

    // That neither side works there.
    static void expect_refused(const std::string &path, int error) {
        setenv("MTS_RUNTIME_DIR", path.c_str(), 1);
        char room[256];
        errno = 0;
        EXPECT_EQ(mts_dev_runtime_dir(room, sizeof room), -1);
        EXPECT_EQ(errno, error);
        errno = 0;
        EXPECT_EQ(mts_dev_open(), 0u);
        EXPECT_EQ(errno, error);
        errno = 0;
        EXPECT_EQ(mts_server_create(), nullptr);
        EXPECT_EQ(errno, error);
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
    for (const mode_t mode : {0701, 0710, 0704, 0770, 0777}) {
        ASSERT_EQ(chmod(directory().c_str(), mode), 0);
        expect_refused(directory(), EPERM);
    }
}

TEST_F(runtime_directory, of_another_user_is_refused) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can give a directory away";
    ASSERT_EQ(chown(directory().c_str(), 65534, 65534), 0);
    expect_refused(directory(), EPERM);
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
