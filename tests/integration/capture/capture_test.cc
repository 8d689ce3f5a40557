// SPDX-License-Identifier: Apache-2.0
// What the transport records of a process's messages, and what becomes of a process that cannot record.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include "capture_reader.h"
#include "integration/transport/test_service.h"
#include "platform/cmi.h"
#include "support/fresh_process.h"

namespace capture_test {
namespace {

using namespace transport_test;

enum kind : uint8_t { message_request = 1, message_answer, cmi_request, cmi_answer };

// The variable is read once, so each part that sends messages is a process of its own.
class capture_file : public transport {
  protected:
    capture_file() { setenv("MTS_CAPTURE", path_.c_str(), 1); }
    ~capture_file() override { unsetenv("MTS_CAPTURE"); }

    const std::string &path() const { return path_; }
    void record_to(const std::string &path) {
        path_ = path;
        setenv("MTS_CAPTURE", path.c_str(), 1);
    }

  private:
    std::string path_ = file("capture.pcapng");
};

// One exchange with a service in the same process, so both ends are recorded.
void exchange_once(std::string_view payload) {
    const service_thread service;
    const open_handle handle;
    EXPECT_EQ(exchange(handle, echo, payload), payload);
}

// What a part writes to standard error.
std::string messages_of(const std::string &file, const std::function<void()> &part) {
    support::in_fresh_process([&] {
        const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        ASSERT_GE(dup2(descriptor, STDERR_FILENO), 0);
        part();
    });
    return bytes_of(file);
}

// The descriptor of this process for a file, or -1 when it has not just one.
int descriptor_of(const std::string &path) {
    std::vector<int> found;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(entry, gone) == path) found.push_back(std::stoi(entry.path().filename()));
    }
    return found.size() == 1 ? found[0] : -1;
}

TEST_F(capture_file, tells_everything_about_an_exchange) {
    support::in_fresh_process([] { exchange_once("ping"); });
    const capture read = read_capture(path());
    EXPECT_EQ(read.sections, 1u);
    ASSERT_EQ(read.packets.size(), 4u);
    std::map<std::pair<uint8_t, uint32_t>, const packet *> ends;
    for (const packet &at : read.packets) {
        ends[{at.kind, at.direction}] = &at;
        EXPECT_EQ(at.node, node);
        EXPECT_EQ(at.sap, sap);
        EXPECT_EQ(at.opcode, echo);
        EXPECT_EQ(at.token, 0x01000001u);
        EXPECT_EQ(at.cmi_word, 0u);
        EXPECT_EQ(at.payload_offset, 0u);
        EXPECT_EQ(at.payload_size, 4u);
        EXPECT_EQ(at.piece, "ping");
        EXPECT_EQ(at.flags, 1u);
        EXPECT_EQ(at.process_name, "capture_test");
        EXPECT_EQ(at.section_process, "capture_test[" + std::to_string(at.process) + "]");
    }
    ASSERT_EQ(ends.size(), 4u) << "both ends sent and received";
    const packet &sent = *ends[{message_request, outbound}];
    const packet &served = *ends[{message_request, inbound}];
    const packet &answered = *ends[{message_answer, outbound}];
    const packet &received = *ends[{message_answer, inbound}];
    EXPECT_EQ(sent.connection, received.connection);
    EXPECT_EQ(served.connection, answered.connection);
    EXPECT_NE(sent.connection, served.connection);
    EXPECT_EQ(sent.message_id, served.message_id);
    EXPECT_EQ(answered.message_id, received.message_id);
    EXPECT_LE(sent.nanoseconds, served.nanoseconds);
    EXPECT_LE(served.nanoseconds, answered.nanoseconds);
    EXPECT_LE(answered.nanoseconds, received.nanoseconds);
    const auto now =
        std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
            .count();
    EXPECT_NEAR(static_cast<double>(sent.nanoseconds), static_cast<double>(now), 60e9);
}

TEST_F(capture_file, tells_the_kind_and_the_error_of_cmi) {
    support::in_fresh_process([] {
        const service_thread service;
        const open_handle handle;
        void *response = nullptr;
        uint32_t length = 2;
        EXPECT_EQ(cmi_req_resp(refuse, 7, "ab", &response, &length, 0, 0, sap, handle, 0), fail_status);
    });
    const capture read = read_capture(path());
    ASSERT_EQ(read.packets.size(), 4u);
    for (const packet &at : read.packets) {
        if (at.kind == cmi_request) {
            EXPECT_EQ(at.cmi_word, 7u);
            EXPECT_EQ(at.piece, "ab");
        } else {
            EXPECT_EQ(at.kind, cmi_answer);
            EXPECT_EQ(at.cmi_word, fail_status);
            EXPECT_EQ(at.piece, "");
        }
    }
}

TEST_F(capture_file, has_payloads_of_every_padding) {
    support::in_fresh_process([] {
        for (const size_t size : {0u, 1u, 2u, 3u, 4u, 5u, 212000u}) exchange_once(pattern(size));
    });
    const capture read = read_capture(path());
    ASSERT_EQ(read.packets.size(), 28u);
    for (const packet &at : read.packets) {
        EXPECT_EQ(at.piece.size(), at.payload_size);
        EXPECT_TRUE(at.piece == pattern(at.payload_size)) << at.payload_size;
    }
}

// They travel in memory files, and are larger than readers of captures take.
TEST_F(capture_file, has_large_payloads_in_pieces) {
    constexpr size_t size = 700'001;
    support::in_fresh_process([] { exchange_once(pattern(size)); });
    std::map<std::pair<uint8_t, uint32_t>, std::string> payloads;
    for (const packet &at : read_capture(path()).packets) {
        std::string &payload = payloads[{at.kind, at.direction}];
        EXPECT_EQ(at.payload_size, size);
        EXPECT_EQ(at.payload_offset, payload.size());
        payload += at.piece;
    }
    ASSERT_EQ(payloads.size(), 4u);
    for (const auto &[end, payload] : payloads) EXPECT_TRUE(payload == pattern(size)) << int{end.first};
}

TEST_F(capture_file, leaves_out_what_was_not_sent) {
    support::in_fresh_process([] {
        const open_handle handle;
        EXPECT_EQ(send_request(handle, echo, "nobody there"), 0u);
    });
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(capture_file, is_for_its_owner_alone_and_closed_in_programs) {
    support::in_fresh_process([this] {
        umask(0);
        exchange_once("x");
        struct stat status {};
        ASSERT_EQ(stat(path().c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 07777, 0600u);
        const int descriptor = descriptor_of(path());
        ASSERT_GE(descriptor, 0);
        EXPECT_NE(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
        EXPECT_NE(fcntl(descriptor, F_GETFL) & O_APPEND, 0);
    });
}

TEST_F(capture_file, goes_on_where_it_ended) {
    for (int run = 0; run < 2; ++run) support::in_fresh_process([] { exchange_once("x"); });
    const capture read = read_capture(path());
    EXPECT_EQ(read.sections, 2u);
    EXPECT_EQ(read.packets.size(), 8u);
    EXPECT_NE(read.packets.front().process, read.packets.back().process);
}

// Each packet is in a section of its process, whoever writes between.
TEST_F(capture_file, is_shared_by_processes) {
    constexpr int exchanges = 150;
    support::in_fresh_process([] {
        const service_process service;
        std::vector<pid_t> children;
        for (int i = 0; i < 4; ++i) {
            const pid_t child = fork();
            if (child != 0) {
                children.push_back(child);
                continue;
            }
            const open_handle handle;
            for (int n = 0; n < exchanges; ++n) EXPECT_EQ(exchange(handle, echo, "x"), "x");
            _exit(testing::Test::HasFailure() ? 1 : 0);
        }
        for (const pid_t child : children) {
            int status = -1;
            EXPECT_EQ(waitpid(child, &status, 0), child);
            EXPECT_EQ(status, 0);
        }
        const open_handle handle;  // the service answers after it has recorded what was before
        EXPECT_EQ(exchange(handle, echo, "x"), "x");
    });
    const capture read = read_capture(path());
    std::map<uint32_t, size_t> received;
    for (const packet &at : read.packets) {
        EXPECT_EQ(at.section_process, "capture_test[" + std::to_string(at.process) + "]");
        if (at.direction == inbound) ++received[at.process];
    }
    EXPECT_GE(read.sections, 6u);
    ASSERT_EQ(received.size(), 6u);
    std::vector<size_t> counts;
    for (const auto &[process, count] : received) counts.push_back(count);
    EXPECT_THAT(counts,
                testing::UnorderedElementsAre(1, exchanges, exchanges, exchanges, exchanges, 4 * exchanges + 1));
}

TEST_F(capture_file, is_recorded_on_by_both_after_a_fork) {
    support::in_fresh_process([] {
        exchange_once("before");
        support::in_fresh_process([] { exchange_once("child"); });
        exchange_once("after");
    });
    const capture read = read_capture(path());
    ASSERT_EQ(read.packets.size(), 12u);
    EXPECT_EQ(read.sections, 3u);
    for (size_t i = 0; i < read.packets.size(); ++i) {
        const packet &at = read.packets[i];
        EXPECT_EQ(at.piece, i < 4 ? "before" : i < 8 ? "child" : "after");
        EXPECT_EQ(at.section_process, "capture_test[" + std::to_string(at.process) + "]");
        EXPECT_EQ(at.process == read.packets[0].process, at.piece != "child");
    }
}

TEST_F(capture_file, is_shared_by_threads) {
    constexpr int exchanges = 100;
    support::in_fresh_process([] {
        const service_thread service;
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([] {
                const open_handle handle;
                for (int n = 0; n < exchanges; ++n) EXPECT_EQ(exchange(handle, echo, "x"), "x");
            });
        for (std::thread &thread : threads) thread.join();
    });
    const capture read = read_capture(path());
    EXPECT_EQ(read.packets.size(), 4u * 4 * exchanges);
    EXPECT_EQ(read.sections, 1u);
}

TEST_F(capture_file, is_not_needed) {
    setenv("MTS_CAPTURE", "", 1);
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), "");
    unsetenv("MTS_CAPTURE");
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), "");
    EXPECT_FALSE(std::filesystem::exists(path()));
}

std::string complaint(const std::string &path, const std::string &reason) {
    return "mts: MTS_CAPTURE: cannot record messages in " + path + ": " + reason + "\n";
}

// Messages are exchanged all the same, and one line is all there is.
TEST_F(capture_file, that_cannot_be_made_is_named) {
    record_to(file("missing") + "/capture.pcapng");
    const auto twice = [] {
        exchange_once("x");
        exchange_once("y");
    };
    EXPECT_EQ(messages_of(file("messages"), twice), complaint(path(), "No such file or directory"));
    record_to(directory());
    EXPECT_EQ(messages_of(file("messages"), twice), complaint(path(), "Is a directory"));
}

TEST_F(capture_file, leaves_what_is_no_capture_alone) {
    for (const std::string &content : {std::string("notes of a user, which are no capture"), std::string("x")}) {
        std::ofstream(path()) << content;
        EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), complaint(path(), "it is no pcapng file"));
        EXPECT_EQ(bytes_of(path()), content);
    }
}

TEST_F(capture_file, leaves_links_and_pipes_alone) {
    std::ofstream(file("target")).close();
    std::filesystem::create_symlink(file("target"), path());
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), complaint(path(), "it is a symbolic link"));
    EXPECT_EQ(bytes_of(file("target")), "");
    const std::string not_ours = "it is no regular file of this user's with one name";
    record_to(file("second_name"));
    std::filesystem::create_hard_link(file("target"), path());
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), complaint(path(), not_ours));
    EXPECT_EQ(bytes_of(file("target")), "");
    record_to(file("pipe"));
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }), complaint(path(), not_ours));
}

#ifdef SECURE_EXCHANGE
TEST_F(capture_file, is_nothing_to_programs_with_other_rights) {
    if (!support::can_be_others()) GTEST_SKIP() << support::only_root;
    const std::string program = file("secure_exchange");
    std::filesystem::copy_file(SECURE_EXCHANGE, program);
    const auto run = [&program] { EXPECT_EQ(system(program.c_str()), 0); };
    EXPECT_EQ(messages_of(file("messages"), run), "");
    EXPECT_EQ(read_capture(path()).packets.size(), 4u);
    std::filesystem::remove(path());
    constexpr uid_t other = 61007;
    ASSERT_EQ(chown(program.c_str(), other, 61010), 0);
    ASSERT_EQ(chmod(program.c_str(), 04755), 0);
    EXPECT_EQ(messages_of(file("messages"), run), "");
    EXPECT_FALSE(std::filesystem::exists(path()));
    EXPECT_GT(std::filesystem::remove_all("/tmp/port_mgr-" + std::to_string(other)), 0u) << "it ran as another user";
}
#endif

// A process that is stopped while it writes holds nobody up.
TEST_F(capture_file, that_stays_locked_is_not_waited_for) {
    const int descriptor = open(path().c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    struct flock whole_file {};
    whole_file.l_type = F_WRLCK;
    ASSERT_EQ(fcntl(descriptor, F_SETLK, &whole_file), 0);
    EXPECT_EQ(messages_of(file("messages"), [] { exchange_once("x"); }),
              complaint(path(), "another process keeps it locked"));
    close(descriptor);
    EXPECT_EQ(bytes_of(path()), "");
}

// As programs do that become daemons: the number of the descriptor is another file's then.
TEST_F(capture_file, that_the_program_closes_ends) {
    const std::string other = file("other");
    const auto close_and_go_on = [&] {
        exchange_once("x");
        const int descriptor = descriptor_of(path());
        ASSERT_GE(descriptor, 0);
        const int opened = open(other.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_EQ(dup2(opened, descriptor), descriptor);
        for (int i = 0; i < 2; ++i) exchange_once("y");
    };
    EXPECT_EQ(messages_of(file("messages"), close_and_go_on), complaint(path(), "the program closed it"));
    EXPECT_EQ(bytes_of(other), "");
    EXPECT_EQ(read_capture(path()).packets.size(), 4u);
}

// What was recorded stays readable: the packet that had no room is not there in part.
TEST_F(capture_file, that_is_full_ends) {
    const auto fill = [] {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{10'000, 10'000};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
        for (int i = 0; i < 4; ++i) exchange_once(pattern(1500));
    };
    EXPECT_EQ(messages_of(file("messages"), fill), complaint(path(), "No space left on device"));
    const capture read = read_capture(path());
    EXPECT_GE(read.packets.size(), 4u);
    EXPECT_LT(read.packets.size(), 16u);
}

}  // namespace
}  // namespace capture_test
