// SPDX-License-Identifier: Apache-2.0
#include "chassis/text_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <stdexcept>

#include "support/other_user.h"
#include "temporary_folder.h"

namespace {

using virtual_switch::replace_file;

std::string complaint(const std::string &path, const std::string &content) {
    try {
        replace_file(path, content);
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "";
}

TEST(replace_file, makes_and_replaces) {
    const temporary_folder folder;
    replace_file(folder.file("f"), "first");
    EXPECT_EQ(folder.content_of("f"), "first");
    replace_file(folder.file("f"), "");
    EXPECT_EQ(folder.content_of("f"), "");
    replace_file(folder.file("f"), std::string(100'000, 'x'));
    EXPECT_EQ(folder.content_of("f"), std::string(100'000, 'x'));
    EXPECT_EQ(folder.size(), 1u);
}

TEST(replace_file, works_in_the_current_directory) {
    const temporary_folder folder;
    const std::string before = std::filesystem::current_path();
    ASSERT_EQ(chdir(folder.path().c_str()), 0);
    replace_file("f", "here");
    ASSERT_EQ(chdir(before.c_str()), 0);
    EXPECT_EQ(folder.content_of("f"), "here");
}

TEST(replace_file, is_for_its_owner_alone) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    for (const mode_t mask : {0u, 022u, 077u, 0777u}) {
        const mode_t before = umask(mask);
        replace_file(path, "secret");
        umask(before);
        struct stat status {};
        ASSERT_EQ(stat(path.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode, S_IFREG | 0600u) << mask;
        ASSERT_EQ(chmod(path.c_str(), 0644), 0);
    }
}

// Whoever has the old file open keeps it whole.
TEST(replace_file, does_not_write_into_the_old_file) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    replace_file(path, "old content");
    std::ifstream old(path);
    replace_file(path, "new");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(old), {}), "old content");
}

TEST(replace_file, is_not_harmed_by_a_leftover) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    std::ofstream(path + ".new") << "a much longer leftover";
    ASSERT_EQ(chmod((path + ".new").c_str(), 0444), 0);
    replace_file(path, "good");
    EXPECT_EQ(folder.content_of("f"), "good");
    replace_file(folder.file("victim"), "untouched");
    ASSERT_EQ(symlink("victim", (path + ".new").c_str()), 0);
    replace_file(path, "better");
    EXPECT_EQ(folder.content_of("f"), "better");
    EXPECT_EQ(folder.content_of("victim"), "untouched");
    EXPECT_EQ(folder.size(), 2u);
}

TEST(replace_file, does_not_write_into_the_other_names_of_a_leftover) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    replace_file(folder.file("victim"), "untouched");
    ASSERT_EQ(link(folder.file("victim").c_str(), (path + ".new").c_str()), 0);
    replace_file(path, "good");
    EXPECT_EQ(folder.content_of("f"), "good");
    EXPECT_EQ(folder.content_of("victim"), "untouched");
    EXPECT_EQ(folder.size(), 2u);
}

// As in /tmp: nobody can remove what others made.
TEST(replace_file, fails_where_another_user_was_first) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const temporary_folder folder;
    const std::string path = folder.file("f");
    ASSERT_EQ(chmod(folder.path().c_str(), 01777), 0);
    support::run_as({61001, 62001, {}}, [&] { std::ofstream(path + ".new") << "planted"; });
    support::run_as({61002, 62002, {}}, [&] { EXPECT_EQ(complaint(path, "x"), path + ": File exists"); });
    EXPECT_EQ(folder.content_of("f.new"), "planted");
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST(replace_file, fails_without_its_directory) {
    const temporary_folder folder;
    const std::string path = folder.file("missing/f");
    EXPECT_EQ(complaint(path, "x"), path + ": No such file or directory");
    replace_file(folder.file("f"), "a file");
    const std::string below_a_file = folder.file("f/g");
    EXPECT_EQ(complaint(below_a_file, "x"), below_a_file + ": Not a directory");
}

TEST(replace_file, fails_for_a_directory) {
    const temporary_folder folder;
    const std::string path = folder.file("d");
    ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
    EXPECT_EQ(complaint(path, "x"), path + ": Is a directory");
    EXPECT_EQ(folder.size(), 1u);
    ASSERT_EQ(mkdir((folder.file("f") + ".new").c_str(), 0700), 0);
    EXPECT_NE(complaint(folder.file("f"), "x"), "");
}

// In a process of its own, since root may do what others may not, and limits cannot be raised again.
template <typename Prepare>
std::string complaint_of_child(const std::string &path, const std::string &content, Prepare prepare) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        prepare();
        const std::string text = complaint(path, content);
        _exit(write(ends[1], text.data(), text.size()) < 0 ? 1 : 0);
    }
    close(ends[1]);
    char text[512];
    const ssize_t size = read(ends[0], text, sizeof text);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return "the child died";
    return {text, static_cast<size_t>(std::max<ssize_t>(size, 0))};
}

TEST(replace_file, fails_in_a_directory_that_cannot_be_written) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    replace_file(path, "old");
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const std::string text = complaint_of_child(path, "new", [] {
        if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
    });
    ASSERT_EQ(chmod(folder.path().c_str(), 0700), 0);
    EXPECT_EQ(text, path + ": Permission denied");
    EXPECT_EQ(folder.content_of("f"), "old");
    EXPECT_EQ(folder.size(), 1u);
}

TEST(replace_file, fails_when_the_file_grows_too_large) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    replace_file(path, "old");
    for (const size_t size : {1001u, 100'000u}) {
        const std::string text = complaint_of_child(path, std::string(size, 'x'), [] {
            const rlimit limit{1000, 1000};
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(2);
            std::signal(SIGXFSZ, SIG_IGN);
        });
        EXPECT_EQ(text, path + ": File too large") << size;
        EXPECT_EQ(folder.content_of("f"), "old");
        EXPECT_EQ(folder.size(), 1u);
    }
}

// A process that replaces the file again and again is killed, again and again.
TEST(replace_file, leaves_a_whole_file_when_it_is_killed) {
    const temporary_folder folder;
    const std::string path = folder.file("f");
    replace_file(path, std::string(50'000, 'a'));
    for (int round = 0; round < 30; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1))
                replace_file(path, std::string(50'000, letter));
        }
        usleep(static_cast<useconds_t>(500 + 700 * round));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const std::string content = folder.content_of("f");
        ASSERT_EQ(content, std::string(50'000, content.empty() ? '?' : content[0])) << round;
    }
    replace_file(path, "last");
    EXPECT_EQ(folder.content_of("f"), "last");
    EXPECT_EQ(folder.size(), 1u);
}

}  // namespace
