// SPDX-License-Identifier: Apache-2.0
// Starting, reloading and ending.
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <chrono>
#include <fstream>
#include <thread>

#include "platform/pdb.h"
#include "virtual_switch_test.h"

namespace {

std::string chassis_with(const std::string &ports, const std::string &type = "6") {
    return "[chassis]\nname = 'changing'\ntype = " + type +
           "\nslots = 2\n[[module]]\nslot = 1\nkind = 'fc'\nports = " + ports +
           "\n[[port_channel]]\nname = 'port-channel1'\nmembers = 'fc1/1'\n";
}

// Looks for as long as it may take a signal to arrive.
bool eventually(auto condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

class lifecycle : public virtual_switch_test {
  protected:
    void write(const std::string &text) { std::ofstream(file_, std::ios::trunc) << text; }
    [[nodiscard]] size_t ports() const { return client_.ports(PM_PORT_INFO_MODE_ALL, {}).records.size(); }

    std::string file_ = directory_.file("chassis.toml");
    std::string pipe_ = directory_.file("pipe");
};

TEST_F(lifecycle, says_that_it_is_ready) {
    const virtual_switch_process daemon(director);
    EXPECT_EQ(daemon.ready_line(), "pm-virtual-switch: ready: director, 215 ports, run-time directory " +
                                       std::string(getenv("MTS_RUNTIME_DIR")));
}

TEST_F(lifecycle, ends_cleanly_when_asked) {
    for (const int signal : {SIGTERM, SIGINT}) {
        virtual_switch_process daemon(director);
        daemon.send(signal);
        EXPECT_EQ(daemon.wait(), 0);
        EXPECT_EQ(daemon.read_rest(child_process::standard_error), "");
        EXPECT_EQ(client_.range("fc1/1", "fc1/1").status, static_cast<uint32_t>(EHOSTUNREACH));
    }
}

TEST_F(lifecycle, reloads_its_file) {
    write(chassis_with("4"));
    virtual_switch_process daemon(file_);
    EXPECT_EQ(ports(), 5u);
    write(chassis_with("7", "10"));
    daemon.send(SIGHUP);
    EXPECT_TRUE(eventually([this] { return ports() == 8; }));
    uint32_t type = 0;
    EXPECT_EQ(pdb_get_chassis_type(&type), 0);
    EXPECT_EQ(type, 10u);
    EXPECT_EQ(client_.next(index_of("port-channel1") - 1).status, 0u);
}

TEST_F(lifecycle, keeps_what_it_has_when_the_file_is_bad) {
    write(chassis_with("4"));
    virtual_switch_process daemon(file_);
    write(chassis_with("4") + "slots = 3\n");
    daemon.send(SIGHUP);
    EXPECT_EQ(daemon.read_line(child_process::standard_error),
              "pm-virtual-switch: not reloaded: " + file_ + ":12: port_channel.slots: unknown key");
    EXPECT_EQ(ports(), 5u);
    write(chassis_with("6"));
    daemon.send(SIGHUP);
    EXPECT_TRUE(eventually([this] { return ports() == 7; }));
}

// None of them makes it wait, read without end or run out of memory.
TEST_F(lifecycle, keeps_what_it_has_when_the_file_is_no_file) {
    write(chassis_with("4"));
    virtual_switch_process daemon(file_);
    const auto refuses = [&](const std::string &reason) {
        daemon.send(SIGHUP);
        EXPECT_EQ(daemon.read_line(child_process::standard_error),
                  "pm-virtual-switch: not reloaded: " + file_ + ":1: file: " + reason);
        EXPECT_EQ(ports(), 5u);
        std::filesystem::remove(file_);
    };
    std::filesystem::remove(file_);
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    refuses("is no regular file");
    std::filesystem::create_directory(file_);
    refuses("is no regular file");
    std::filesystem::create_symlink("/dev/zero", file_);
    refuses("is no regular file");
    write("");
    std::filesystem::resize_file(file_, 1 << 30);
    refuses("is larger than 1 MiB");
}

TEST_F(lifecycle, keeps_what_it_has_when_the_database_is_too_small) {
    write(chassis_with("4"));
    virtual_switch_process daemon(file_);
    write(chassis_with("4") + "[[interface]]\nname = 'loopback1-4000'\n[[interface]]\nname = 'if254-1-4000'\n");
    daemon.send(SIGHUP);
    EXPECT_THAT(daemon.read_line(child_process::standard_error),
                testing::HasSubstr("than the chassis database has room"));
    EXPECT_EQ(ports(), 5u);
}

TEST_F(lifecycle, goes_on_when_nobody_reads_its_messages) {
    ASSERT_EQ(mkfifo(pipe_.c_str(), 0600), 0);
    write(chassis_with("4"));
    child_process daemon({"/bin/sh", "-c", "exec \"$0\" \"$1\" 2>\"$2\"", PM_VIRTUAL_SWITCH, file_, pipe_});
    { std::ifstream reader(pipe_); }
    daemon.read_line(child_process::standard_output);
    write("");
    daemon.send(SIGHUP);
    EXPECT_EQ(ports(), 5u);
    daemon.send(SIGTERM);
    EXPECT_EQ(daemon.wait(), 0);
}

TEST_F(lifecycle, waits_for_nobody_to_read_its_messages) {
    write(chassis_with("4"));
    ASSERT_EQ(mkfifo(pipe_.c_str(), 0600), 0);
    const int reader = open(pipe_.c_str(), O_RDWR | O_NONBLOCK);
    while (::write(reader, "unread\n", 7) > 0) {
    }
    child_process daemon({"/bin/sh", "-c", "exec \"$0\" \"$1\" 2>\"$2\"", PM_VIRTUAL_SWITCH, file_, pipe_});
    daemon.read_line(child_process::standard_output);
    write("");
    daemon.send(SIGHUP);
    daemon.send(SIGTERM);
    EXPECT_EQ(daemon.wait(), 0);
    close(reader);
}

// What it would say there must not reach what it opens: the lock, a socket, the state file.
TEST_F(lifecycle, opens_nothing_in_the_place_of_closed_standard_descriptors) {
    child_process daemon({"/bin/sh", "-c", "exec \"$0\" \"$1\" 0<&- 1>&- 2>&-", PM_VIRTUAL_SWITCH, director});
    ASSERT_TRUE(eventually([this] { return client_.range("fc1/1", "fc1/1").status == 0; }));
    for (const int fd : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        EXPECT_EQ(daemon.target_of_descriptor(fd), "/dev/null");
}

TEST_F(lifecycle, is_alone_in_its_directory) {
    const virtual_switch_process first(director);
    child_process second({PM_VIRTUAL_SWITCH, fixed_switch});
    EXPECT_EQ(second.wait(), 1);
    EXPECT_EQ(second.read_rest(child_process::standard_error),
              "pm-virtual-switch: another instance serves in run-time directory " +
                  std::string(getenv("MTS_RUNTIME_DIR")) + "\n");
    EXPECT_EQ(ports(), 215u);
}

TEST_F(lifecycle, comes_back_for_a_client_that_stayed) {
    {
        virtual_switch_process daemon(director);
        EXPECT_EQ(ports(), 215u);
        daemon.send(SIGKILL);
        EXPECT_EQ(daemon.wait(), 128 + SIGKILL);
        EXPECT_NE(client_.range("fc1/1", "fc1/1").status, 0u);
    }
    const virtual_switch_process daemon(fixed_switch);
    EXPECT_EQ(ports(), 28u);
    EXPECT_EQ(pm_get_mts_sap(index_of("port-channel2")), PM_SAP_ETHERNET_CHANNEL);
}

// Listens as a service manager does.
class notify_socket {
  public:
    explicit notify_socket(const std::string &path) : fd_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(bind(fd_, reinterpret_cast<const sockaddr *>(&address), sizeof address), 0);
        const timeval limit{10, 0};
        setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        setenv("NOTIFY_SOCKET", path.c_str(), 1);
    }
    ~notify_socket() {
        unsetenv("NOTIFY_SOCKET");
        close(fd_);
    }
    notify_socket(const notify_socket &) = delete;
    notify_socket &operator=(const notify_socket &) = delete;

    [[nodiscard]] std::string receive() const {
        std::array<char, 256> buffer{};
        const ssize_t size = recv(fd_, buffer.data(), buffer.size(), 0);
        return size < 0 ? "" : std::string(buffer.data(), static_cast<size_t>(size));
    }

  private:
    int fd_;
};

TEST_F(lifecycle, tells_a_service_manager) {
    const notify_socket manager(directory_.file("notify"));
    virtual_switch_process daemon(director);
    EXPECT_EQ(manager.receive(), "READY=1");
    daemon.send(SIGHUP);
    EXPECT_THAT(manager.receive(), testing::MatchesRegex("RELOADING=1\nMONOTONIC_USEC=[0-9]+"));
    EXPECT_EQ(manager.receive(), "READY=1");
    daemon.send(SIGTERM);
    EXPECT_EQ(manager.receive(), "STOPPING=1");
    EXPECT_EQ(daemon.wait(), 0);
}

}  // namespace
