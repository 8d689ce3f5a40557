// SPDX-License-Identifier: Apache-2.0
// The database file: what the publisher puts there, what readers make of it, and of what is no database.
#include "platform_dev/chassis_db.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <fstream>

#include "chassis_db/chassis_image.h"
#include "chassis_db/chassis_reader.h"
#include "runtime_dir_fixture.h"
#include "support/other_user.h"

using namespace platform_dev;

namespace {

class ChassisDb : public runtime_dir_test {
  protected:
    std::string path() const { return directory_.file(chassis_file_name); }

    // Overwrites one word of the file, as a damaged or foreign writer would.
    void poke(size_t offset, uint32_t value) const {
        std::fstream file(path(), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(static_cast<std::streamoff>(offset));
        file.write(reinterpret_cast<const char *>(&value), sizeof value);
        ASSERT_TRUE(file.good());
    }
};

chassis sample() {
    chassis content;
    content.chassis_type = 0x01020304;
    content.slot_count = 9;
    content.modules = {{0, 0x1112}, {8, 0x2122}};
    content.port_channels = {{0x04001000, {0x01000000, 0x01001000}}, {0x04002000, {}}};
    content.index_map = {{0x01003000, 0x31323334, 3, 43}, {0x01001000, 0x21222324, 2, 42}, {0xfe000001, 1, 4, 44}};
    return content;
}

TEST_F(ChassisDb, NothingIsPublishedAtFirst) {
    EXPECT_FALSE(find_chassis());
    EXPECT_FALSE(find_module(0));
    EXPECT_FALSE(find_port_channel(0x04001000));
    EXPECT_FALSE(find_index_map_entry(0x01001000));
    const auto publisher = chassis_publisher::open();
    ASSERT_NE(publisher, nullptr);
    EXPECT_FALSE(find_chassis());
    EXPECT_FALSE(find_index_map_entry(0));
}

TEST_F(ChassisDb, ReadersFindWhatIsPublished) {
    const auto publisher = chassis_publisher::open();
    ASSERT_NE(publisher, nullptr);
    ASSERT_TRUE(publisher->publish(sample()));
    const auto summary = find_chassis();
    ASSERT_TRUE(summary);
    EXPECT_EQ(summary->chassis_type, 0x01020304u);
    EXPECT_EQ(summary->slot_count, 9);
    EXPECT_EQ(find_module(8).value().card_type, 0x2122);
    EXPECT_EQ(find_module(8).value().slot, 8);
    EXPECT_FALSE(find_module(1));
    const auto members = find_port_channel(0x04001000).value();
    ASSERT_EQ(members.count, 2u);
    EXPECT_EQ(members.members[0], 0x01000000u);
    EXPECT_EQ(members.members[1], 0x01001000u);
    EXPECT_EQ(find_port_channel(0x04002000).value().count, 0u);
    EXPECT_FALSE(find_port_channel(0x04003000));
    for (const auto &expected : sample().index_map) {
        const auto entry = find_index_map_entry(expected.if_index).value();
        EXPECT_EQ(entry.if_index, expected.if_index);
        EXPECT_EQ(entry.node, expected.node);
        EXPECT_EQ(entry.slot, expected.slot);
        EXPECT_EQ(entry.port_base, expected.port_base);
    }
    for (const if_index_t absent : {0u, 0x01002000u, 0x01004000u, 0xffffffffu})
        EXPECT_FALSE(find_index_map_entry(absent));
}

TEST_F(ChassisDb, FileIsPrivateAndHasItsFixedLayout) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(sample()));
    struct stat status {};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    ASSERT_EQ(status.st_size, 84520);
    std::ifstream file(path(), std::ios::binary);
    const auto word = [&](std::streamoff offset) {
        uint32_t value = 0;
        file.seekg(offset);
        file.read(reinterpret_cast<char *>(&value), sizeof value);
        return value;
    };
    EXPECT_EQ(word(0), 0x43484442u);
    EXPECT_EQ(word(4), 1u);
    EXPECT_EQ(word(8), 84520u);
    EXPECT_EQ(word(12) % 2, 0u);
    EXPECT_EQ(word(16), 1u);
    EXPECT_EQ(word(20), 0x01020304u);
    EXPECT_EQ(word(24), 9u);
    EXPECT_EQ(word(28), 2u);
    EXPECT_EQ(word(32), 2u);
    EXPECT_EQ(word(36), 3u);
    EXPECT_EQ(word(40 + 8), 8u);
    EXPECT_EQ(word(40 + 12), 0x2122u);
    EXPECT_EQ(word(552), 0x04001000u);
    EXPECT_EQ(word(552 + 4), 2u);
    EXPECT_EQ(word(552 + 12), 0x01001000u);
    EXPECT_EQ(word(18984), 0x01001000u) << "the map is sorted";
    EXPECT_EQ(word(18984 + 16 + 4), 0x31323334u);
    EXPECT_EQ(word(18984 + 16 + 8), 3u);
    EXPECT_EQ(word(18984 + 16 + 12), 43u);
}

TEST_F(ChassisDb, FullTablesArePublishedAndLongerOnesRefused) {
    const auto publisher = chassis_publisher::open();
    chassis full;
    full.modules.resize(64);
    full.port_channels.resize(256);
    full.port_channels.back() = {0x04fff000, std::vector<if_index_t>(17, 0x01000000)};
    for (uint32_t i = 0; i < 4096; ++i) full.index_map.push_back({(4095 - i) * 3, i, 1, 2});
    ASSERT_TRUE(publisher->publish(full));
    EXPECT_EQ(find_port_channel(0x04fff000).value().count, 16u);
    for (uint32_t i = 0; i < 4096; ++i) {
        ASSERT_EQ(find_index_map_entry((4095 - i) * 3).value().node, i);
        ASSERT_FALSE(find_index_map_entry((4095 - i) * 3 + 1));
    }
    for (int table = 0; table < 3; ++table) {
        chassis longer = full;
        longer.modules.resize(table == 0 ? 65 : 64);
        longer.port_channels.resize(table == 1 ? 257 : 256);
        longer.index_map.resize(table == 2 ? 4097 : 4096);
        errno = 0;
        EXPECT_FALSE(publisher->publish(longer));
        EXPECT_EQ(errno, ENOSPC);
        EXPECT_EQ(find_index_map_entry(0).value().node, 4095u) << "the old content stays";
    }
}

TEST_F(ChassisDb, FirstOfTwoEntriesCounts) {
    const auto publisher = chassis_publisher::open();
    chassis content = sample();
    content.index_map = {{7, 1, 1, 1}, {7, 2, 2, 2}};
    content.modules = {{3, 100}, {3, 200}};
    ASSERT_TRUE(publisher->publish(content));
    EXPECT_EQ(find_index_map_entry(7).value().node, 1u);
    EXPECT_EQ(find_module(3).value().card_type, 100);
}

TEST_F(ChassisDb, CountsBeyondATablesEndAreNotBelieved) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(sample()));
    ASSERT_TRUE(find_chassis());
    for (const size_t count_offset : {28, 32, 36, 556}) poke(count_offset, 0xffffffff);
    EXPECT_FALSE(find_module(77));
    EXPECT_FALSE(find_port_channel(0x04fff000));
    EXPECT_FALSE(find_index_map_entry(0xffffffff));
    EXPECT_EQ(find_port_channel(0x04001000).value().count, 16u);
}

TEST_F(ChassisDb, ForeignHeadersAreNotRead) {
    const uint32_t good[] = {chassis_magic, chassis_version, sizeof(chassis_image)};
    for (size_t i = 0; i < 3; ++i) {
        temporary_runtime_dir other;
        const auto publisher = chassis_publisher::open();
        ASSERT_TRUE(publisher->publish(sample()));
        const int fd = open(other.file(chassis_file_name).c_str(), O_WRONLY | O_CLOEXEC);
        const uint32_t bad = good[i] + 1;
        ASSERT_EQ(pwrite(fd, &bad, sizeof bad, static_cast<off_t>(4 * i)), 4);
        EXPECT_FALSE(find_chassis());
        ASSERT_EQ(pwrite(fd, &good[i], sizeof bad, static_cast<off_t>(4 * i)), 4);
        EXPECT_TRUE(find_chassis());
        close(fd);
    }
}

TEST_F(ChassisDb, ShortLongAndOddFilesAreNotRead) {
    for (const size_t size : {size_t{0}, size_t{1}, sizeof(chassis_image) - 1, sizeof(chassis_image) + 1}) {
        std::ofstream(path(), std::ios::trunc | std::ios::binary) << std::string(size, 'C');
        EXPECT_FALSE(find_chassis()) << size;
    }
    std::filesystem::remove(path());
    std::filesystem::create_directory(path());
    EXPECT_FALSE(find_chassis());
    std::filesystem::remove(path());
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_FALSE(find_chassis());
}

TEST_F(ChassisDb, PublisherReplacesAFileOfAnotherFormat) {
    for (const size_t size : {size_t{1}, sizeof(chassis_image), sizeof(chassis_image) + 4}) {
        std::ofstream(path(), std::ios::trunc | std::ios::binary) << std::string(size, 'C');
        const int old = open(path().c_str(), O_RDONLY | O_CLOEXEC);
        const auto publisher = chassis_publisher::open();
        ASSERT_NE(publisher, nullptr) << size;
        ASSERT_TRUE(publisher->publish(sample()));
        EXPECT_TRUE(find_chassis());
        struct stat status {};
        ASSERT_EQ(fstat(old, &status), 0);
        EXPECT_EQ(static_cast<size_t>(status.st_size), size) << "who has the old file mapped keeps it whole";
        EXPECT_EQ(status.st_nlink, 0u);
        close(old);
    }
}

TEST_F(ChassisDb, SymbolicLinkIsNotFollowed) {
    temporary_runtime_dir other;
    const auto elsewhere = chassis_publisher::open();
    ASSERT_TRUE(elsewhere->publish(sample()));
    directory_.use();
    std::filesystem::create_symlink(other.file(chassis_file_name), path());
    EXPECT_FALSE(find_chassis());
    EXPECT_EQ(chassis_publisher::open(), nullptr);
    EXPECT_EQ(errno, ELOOP);
}

class ChassisDbPlanted : public ChassisDb {
  protected:
    void expect_refused(int error) {
        EXPECT_EQ(chassis_publisher::open(), nullptr);
        EXPECT_EQ(errno, error);
        EXPECT_FALSE(find_chassis());
        std::filesystem::remove(path());
    }
};

TEST_F(ChassisDbPlanted, OtherNameOfAFileIsRefusedAndLeftAlone) {
    const std::string victim = directory_.file("victim");
    for (const std::string content : {"", "untouched"}) {
        std::ofstream(victim) << content;
        ASSERT_EQ(chmod(victim.c_str(), 0644), 0);
        std::filesystem::create_hard_link(victim, path());
        expect_refused(EPERM);
        struct stat status {};
        ASSERT_EQ(stat(victim.c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0644u);
        EXPECT_EQ(static_cast<size_t>(status.st_size), content.size());
    }
}

TEST_F(ChassisDbPlanted, WhatIsNoFileIsRefused) {
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    expect_refused(EPERM);
    std::filesystem::create_directory(path());
    expect_refused(EISDIR);
}

TEST_F(ChassisDbPlanted, FileOfAnotherUserIsNeitherTakenNorRead) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(sample()));
    ASSERT_EQ(chown(path().c_str(), 61001, 62001), 0);
    EXPECT_FALSE(find_chassis());
    ASSERT_EQ(chown(path().c_str(), geteuid(), 62001), 0);
    EXPECT_TRUE(find_chassis());
    publisher.reset();
    ASSERT_EQ(chown(path().c_str(), 61001, 62001), 0);
    expect_refused(EPERM);
}

TEST_F(ChassisDbPlanted, LockIsRefusedAsAnyFile) {
    const std::string lock = directory_.file("chassis-db.lock");
    std::filesystem::create_symlink("elsewhere", lock);
    EXPECT_EQ(chassis_publisher::open(), nullptr);
    EXPECT_EQ(errno, ELOOP);
    EXPECT_FALSE(std::filesystem::exists(directory_.file("elsewhere")));
}

TEST_F(ChassisDb, IsReadByMembersInASharedDirectory) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const std::string directory = std::filesystem::path(path()).parent_path();
    {
        const mode_t before = umask(0777);
        EXPECT_NE(chassis_publisher::open(), nullptr) << "private: what it leaves is given to the group later";
        umask(before);
    }
    ASSERT_EQ(chown(directory.c_str(), 0, 62000), 0);
    ASSERT_EQ(chmod(directory.c_str(), 0710), 0);
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(sample()));
    struct stat status {};
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(status.st_gid, 62000u);
    support::run_as({61001, 62001, {62000}}, [this] {
        EXPECT_TRUE(find_chassis());
        EXPECT_EQ(open(path().c_str(), O_RDWR | O_CLOEXEC), -1);
        EXPECT_EQ(open(directory_.file("chassis-db.lock").c_str(), O_RDONLY | O_CLOEXEC), -1);
        EXPECT_EQ(chassis_publisher::open(), nullptr);
        EXPECT_EQ(errno, EPERM);
    });
    support::run_as({61002, 62001, {}}, [] { EXPECT_FALSE(find_chassis()); });
}

TEST_F(ChassisDb, OpenDirectoryIsRefused) {
    std::filesystem::permissions(directory_.file(""), std::filesystem::perms::all);
    EXPECT_EQ(chassis_publisher::open(), nullptr);
    EXPECT_EQ(errno, EPERM);
    EXPECT_FALSE(find_chassis());
}

}  // namespace
