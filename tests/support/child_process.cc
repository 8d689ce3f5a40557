// SPDX-License-Identifier: Apache-2.0
#include "support/child_process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>
#include <utility>

namespace {

constexpr int limit_ms = 60'000;
constexpr std::chrono::milliseconds limit{limit_ms};

std::vector<char *> pointers_to(std::vector<std::string> &texts) {
    std::vector<char *> pointers;
    for (std::string &text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

child_process::child_process(std::vector<std::string> command) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    std::array<int, 2> write_ends{-1, -1};
    for (const output to : {standard_output, standard_error}) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("pipe2");
        pipes_[to] = ends[0];
        write_ends[to] = ends[1];
        posix_spawn_file_actions_adddup2(&actions, ends[1], to == standard_output ? STDOUT_FILENO : STDERR_FILENO);
    }
    const int error =
        posix_spawn(&pid_, command.front().c_str(), &actions, nullptr, pointers_to(command).data(), environ);
    for (const int fd : write_ends) close(fd);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("cannot run " + command.front());
}

child_process::~child_process() {
    if (pid_ > 0) {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    for (const int fd : pipes_) close(fd);
}

bool child_process::read_more(output from) {
    pollfd readable{pipes_[from], POLLIN, 0};
    if (poll(&readable, 1, limit_ms) != 1) return false;
    std::array<char, 4096> buffer{};
    const ssize_t size = read(pipes_[from], buffer.data(), buffer.size());
    if (size <= 0) return false;
    unread_[from].append(buffer.data(), static_cast<size_t>(size));
    return true;
}

std::string child_process::read_line(output from) {
    std::string &unread = unread_[from];
    while (unread.find('\n') == std::string::npos) {
        if (!read_more(from)) return "";
    }
    const size_t end = unread.find('\n');
    std::string line = unread.substr(0, end);
    unread.erase(0, end + 1);
    return line;
}

std::string child_process::read_rest(output from) {
    while (read_more(from)) {
    }
    return std::exchange(unread_[from], "");
}

void child_process::send(int signal) const { kill(pid_, signal); }

void child_process::stop() const {
    send(SIGSTOP);
    waitpid(pid_, nullptr, WUNTRACED);
}

size_t child_process::descriptors() const {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(pid_) + "/fd");
    return static_cast<size_t>(std::distance(begin(all), end(all)));
}

std::string child_process::target_of_descriptor(int fd) const {
    return std::filesystem::read_symlink("/proc/" + std::to_string(pid_) + "/fd/" + std::to_string(fd));
}

int child_process::wait() {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    int status = 0;
    while (waitpid(pid_, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) return -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
