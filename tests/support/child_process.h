// SPDX-License-Identifier: Apache-2.0
// child_process.h: a program that a test runs.
#ifndef TESTS_SUPPORT_CHILD_PROCESS_H
#define TESTS_SUPPORT_CHILD_PROCESS_H

#include <sys/types.h>

#include <array>
#include <string>
#include <vector>

// Is killed, if it still runs, when the object goes. Its environment is the test's.
class child_process {
  public:
    enum output { standard_output, standard_error };

    // `command` is the path of the program and its arguments.
    explicit child_process(std::vector<std::string> command);
    ~child_process();
    child_process(const child_process &) = delete;
    child_process &operator=(const child_process &) = delete;

    // The next line, without its end; empty when the output has ended, or after ten seconds.
    std::string read_line(output from);

    // All lines to the end of the output.
    std::string read_rest(output from);

    void send(int signal) const;

    // Stops it until SIGCONT; it has stopped when this returns.
    void stop() const;

    // How many descriptors it has open.
    [[nodiscard]] size_t descriptors() const;

    // What one of them leads to.
    [[nodiscard]] std::string target_of_descriptor(int fd) const;

    // Waits for the end, at most ten seconds. Returns the exit status, 128 and the number of the signal that ended it,
    // or -1 when it runs on.
    int wait();

  private:
    // Reads what there is, for at most ten seconds. Returns false at the end.
    bool read_more(output from);

    pid_t pid_ = -1;
    std::array<int, 2> pipes_{-1, -1};
    std::array<std::string, 2> unread_;
};

#endif
