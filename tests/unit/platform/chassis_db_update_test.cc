// SPDX-License-Identifier: Apache-2.0
// Readers beside a publisher that updates, dies, restarts or moves.
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/wait.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

#include "chassis_db/chassis_image.h"
#include "chassis_db/chassis_reader.h"
#include "platform_dev/chassis_db.h"
#include "runtime_dir_fixture.h"

using namespace platform_dev;
using namespace std::chrono_literals;

namespace {

class ChassisDbUpdate : public runtime_dir_test {};

// Content in which everything follows from one number, so that a mixture of two shows.
chassis generation(uint32_t number) {
    chassis content;
    content.chassis_type = number;
    content.slot_count = static_cast<uint8_t>(number);
    const auto half = static_cast<uint16_t>(number);
    content.modules = {{1, half}};
    content.port_channels = {{0x04001000, std::vector<if_index_t>(1 + number % 16, number)}};
    for (uint32_t i = 0; i < 1000 + number % 7; ++i)
        content.index_map.push_back({i * 2, number, static_cast<uint8_t>(number), static_cast<uint8_t>(number)});
    return content;
}

bool is_whole(const chassis_summary &summary) {
    return summary.slot_count == static_cast<uint8_t>(summary.chassis_type);
}

bool is_whole(const member_list &list) {
    for (uint32_t i = 0; i < list.count; ++i)
        if (list.members[i] != list.members[0]) return false;
    return list.count == 1 + list.members[0] % 16;
}

bool is_whole(const index_map_entry &entry) {
    return entry.slot == static_cast<uint8_t>(entry.node) && entry.port_base == static_cast<uint8_t>(entry.node);
}

// Looks everything up until told to stop. Returns the number of torn or missing records.
int count_bad_reads(const std::atomic<bool> &stop) {
    int bad = 0;
    for (uint32_t i = 0; !stop; ++i) {
        const auto summary = find_chassis();
        const auto list = find_port_channel(0x04001000);
        const auto entry = find_index_map_entry(i % 1000 * 2);
        bad += !summary || !is_whole(*summary);
        bad += !list || !is_whole(*list);
        bad += !entry || !is_whole(*entry);
    }
    return bad;
}

// Publishes generation after generation for as long as the tests of readers take.
void publish_generations(chassis_publisher &publisher) {
    const auto end = std::chrono::steady_clock::now() + 700ms;
    for (uint32_t number = 1; std::chrono::steady_clock::now() < end; ++number)
        ASSERT_TRUE(publisher.publish(generation(number * 0x9e3779b1u)));
}

TEST_F(ChassisDbUpdate, ThreadsNeverSeeATornRecord) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(0)));
    std::atomic<bool> stop = false;
    std::atomic<int> bad = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) readers.emplace_back([&] { bad += count_bad_reads(stop); });
    publish_generations(*publisher);
    stop = true;
    for (auto &reader : readers) reader.join();
    EXPECT_EQ(bad, 0);
}

// Reads in a process of its own until SIGTERM; exits with 0 when no record was bad.
pid_t start_reader_process() {
    const pid_t pid = fork();
    if (pid != 0) return pid;
    static std::atomic<bool> stop = false;
    signal(SIGTERM, [](int) { stop = true; });
    _exit(count_bad_reads(stop) == 0 ? 0 : 1);
}

TEST_F(ChassisDbUpdate, ProcessesNeverSeeATornRecord) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(0)));
    const pid_t readers[] = {start_reader_process(), start_reader_process()};
    std::this_thread::sleep_for(50ms);
    publish_generations(*publisher);
    for (const pid_t reader : readers) {
        kill(reader, SIGTERM);
        int status = -1;
        ASSERT_EQ(waitpid(reader, &status, 0), reader);
        EXPECT_EQ(status, 0);
    }
}

TEST_F(ChassisDbUpdate, SecondPublisherIsRefused) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(5)));
    EXPECT_EQ(chassis_publisher::open(), nullptr);
    EXPECT_EQ(errno, EWOULDBLOCK);
    EXPECT_EQ(find_chassis().value().chassis_type, 5u) << "the refused one changed nothing";
}

// Readers can open the database, so its own lock would be theirs to take.
TEST_F(ChassisDbUpdate, ReaderCannotHoldThePublishersPlace) {
    ASSERT_NE(chassis_publisher::open(), nullptr);
    const int reader = open(directory_.file(chassis_file_name).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(reader, LOCK_EX | LOCK_NB), 0);
    EXPECT_NE(chassis_publisher::open(), nullptr);
    close(reader);
}

TEST_F(ChassisDbUpdate, MappedReadersFollowUpdatesAndARestart) {
    auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(5)));
    EXPECT_EQ(find_chassis().value().chassis_type, 5u);
    ASSERT_TRUE(publisher->publish(generation(6)));
    EXPECT_EQ(find_chassis().value().chassis_type, 6u);
    publisher.reset();
    EXPECT_FALSE(find_chassis());
    publisher = chassis_publisher::open();
    ASSERT_NE(publisher, nullptr);
    EXPECT_FALSE(find_chassis());
    ASSERT_TRUE(publisher->publish(generation(7)));
    EXPECT_EQ(find_chassis().value().chassis_type, 7u);
}

TEST_F(ChassisDbUpdate, MappedReadersFollowAFileThatWasReplaced) {
    auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(5)));
    EXPECT_TRUE(find_chassis());
    std::filesystem::remove(directory_.file(chassis_file_name));
    EXPECT_FALSE(find_chassis());
    publisher.reset();
    const auto second = chassis_publisher::open();
    ASSERT_NE(second, nullptr);
    ASSERT_TRUE(second->publish(generation(6)));
    EXPECT_EQ(find_chassis().value().chassis_type, 6u);
}

TEST_F(ChassisDbUpdate, MappedReadersFollowTheEnvironment) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(5)));
    EXPECT_EQ(find_chassis().value().chassis_type, 5u);
    temporary_runtime_dir other;
    EXPECT_FALSE(find_chassis());
    const auto second = chassis_publisher::open();
    ASSERT_TRUE(second->publish(generation(6)));
    EXPECT_EQ(find_chassis().value().chassis_type, 6u);
    directory_.use();
    EXPECT_EQ(find_chassis().value().chassis_type, 5u);
}

TEST_F(ChassisDbUpdate, ThreadsFollowAFileThatIsReplacedAgainAndAgain) {
    std::atomic<bool> stop = false;
    std::atomic<int> torn = 0;
    std::atomic<int> found = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i)
        readers.emplace_back([&] {
            while (!stop) {
                const auto list = find_port_channel(0x04001000);
                torn += list && !is_whole(*list);
                found += list.has_value();
            }
        });
    for (uint32_t number = 1; number < 300; ++number) {
        const auto publisher = chassis_publisher::open();
        ASSERT_TRUE(publisher->publish(generation(number)));
        std::this_thread::sleep_for(1ms);
        std::filesystem::remove(directory_.file(chassis_file_name));
    }
    stop = true;
    for (auto &reader : readers) reader.join();
    EXPECT_EQ(torn, 0);
    EXPECT_GT(found, 0);
}

// Leaves the sequence odd, as a publisher does that is killed within an update.
void die_within_update(const std::string &path) {
    const int fd = open(path.c_str(), O_RDWR | O_CLOEXEC);
    uint32_t sequence = 0;
    ASSERT_EQ(pread(fd, &sequence, 4, offsetof(chassis_image, sequence)), 4);
    sequence |= 1;
    ASSERT_EQ(pwrite(fd, &sequence, 4, offsetof(chassis_image, sequence)), 4);
    close(fd);
}

TEST_F(ChassisDbUpdate, DeadPublisherFailsReadersUntilTheNextOneHealsIt) {
    const std::string path = directory_.file(chassis_file_name);
    const pid_t pid = fork();
    if (pid == 0) {
        const auto publisher = chassis_publisher::open();
        const bool published = publisher->publish(generation(5));
        die_within_update(path);
        _exit(published ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    ASSERT_EQ(status, 0);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(find_chassis());
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    const auto publisher = chassis_publisher::open();
    ASSERT_NE(publisher, nullptr);
    EXPECT_FALSE(find_chassis());
    ASSERT_TRUE(publisher->publish(generation(6)));
    EXPECT_EQ(find_chassis().value().chassis_type, 6u);
}

TEST_F(ChassisDbUpdate, ReaderWaitsForAnUpdateThatEnds) {
    const auto publisher = chassis_publisher::open();
    ASSERT_TRUE(publisher->publish(generation(5)));
    EXPECT_TRUE(find_chassis());
    die_within_update(directory_.file(chassis_file_name));
    std::thread slow_writer([&] {
        std::this_thread::sleep_for(5ms);
        EXPECT_TRUE(publisher->publish(generation(6)));
    });
    EXPECT_EQ(find_chassis().value().chassis_type, 6u);
    slow_writer.join();
}

TEST_F(ChassisDbUpdate, KilledPublisherLeavesItsContentAndItsPlace) {
    const pid_t pid = fork();
    if (pid == 0) {
        const auto publisher = chassis_publisher::open();
        _exit(publisher->publish(generation(5)) ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(find_chassis().value().chassis_type, 5u);
    const auto publisher = chassis_publisher::open();
    EXPECT_NE(publisher, nullptr);
    EXPECT_FALSE(find_chassis()) << "the next publisher starts empty";
}

}  // namespace
