// SPDX-License-Identifier: Apache-2.0
// child_process.h: a forked process that is ended with its owner.
#ifndef BENCH_SUPPORT_CHILD_PROCESS_H
#define BENCH_SUPPORT_CHILD_PROCESS_H

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <utility>

#include "bench/support/measure.h"

namespace bench {

class child_process {
  public:
    // The child runs `body` and ends, at the latest with the process that made it.
    template <typename Body>
    explicit child_process(Body body) : pid_(fork()) {
        require(pid_ >= 0, "fork");
        if (pid_ != 0) return;
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        body();
        _exit(EXIT_SUCCESS);
    }
    child_process(child_process &&other) noexcept : pid_(std::exchange(other.pid_, -1)) {}
    ~child_process() {
        if (pid_ < 0) return;
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    [[nodiscard]] pid_t pid() const { return pid_; }

    // Waits until it ends by itself, well.
    void wait() {
        int status = 0;
        require(waitpid(std::exchange(pid_, -1), &status, 0) > 0 && status == EXIT_SUCCESS, "a forked process");
    }

  private:
    pid_t pid_;
};

}  // namespace bench

#endif
