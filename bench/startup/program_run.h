// SPDX-License-Identifier: Apache-2.0
// program_run.h: one run of a program, from its start to its end.
#ifndef BENCH_STARTUP_PROGRAM_RUN_H
#define BENCH_STARTUP_PROGRAM_RUN_H

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "bench/support/measure.h"

namespace bench {

// Where the output of a program goes.
class output_target {
  public:
    explicit output_target(int descriptor) {
        require(posix_spawn_file_actions_init(&actions_) == 0, "posix_spawn_file_actions_init");
        require(posix_spawn_file_actions_adddup2(&actions_, descriptor, STDOUT_FILENO) == 0,
                "posix_spawn_file_actions_adddup2");
    }
    ~output_target() { posix_spawn_file_actions_destroy(&actions_); }
    output_target(const output_target &) = delete;
    output_target &operator=(const output_target &) = delete;
    [[nodiscard]] const posix_spawn_file_actions_t *actions() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_;
};

inline pid_t start(std::vector<std::string> words, const output_target &output) {
    std::vector<char *> arguments;
    for (std::string &word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t pid = 0;
    require(posix_spawn(&pid, arguments[0], output.actions(), nullptr, arguments.data(), environ) == 0, arguments[0]);
    return pid;
}

inline void wait_for_success(pid_t pid, const char *program) {
    int status = 0;
    require(waitpid(pid, &status, 0) == pid && WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS, program);
}

// Runs a program without a reader of its output.
inline void run(const std::vector<std::string> &words) {
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    wait_for_success(start(words, output_target(nowhere)), words.front().c_str());
    close(nowhere);
}

// Runs a program and reads all that it prints through a pipe. Returns the number of bytes.
inline size_t run_and_read(const std::vector<std::string> &words) {
    int ends[2];
    require(pipe2(ends, O_CLOEXEC) == 0, "pipe2");
    const pid_t pid = start(words, output_target(ends[1]));
    close(ends[1]);
    char text[64 * 1024];
    size_t size = 0;
    for (ssize_t got = 0; (got = read(ends[0], text, sizeof text)) > 0;) size += static_cast<size_t>(got);
    close(ends[0]);
    wait_for_success(pid, words.front().c_str());
    return size;
}

}  // namespace bench

#endif
