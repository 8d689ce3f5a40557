// SPDX-License-Identifier: Apache-2.0
// readiness.h: how a forked process tells another one that it can be asked.
#ifndef BENCH_SUPPORT_READINESS_H
#define BENCH_SUPPORT_READINESS_H

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "bench/support/measure.h"

namespace bench {

// Made before the fork.
class readiness {
  public:
    readiness() { require(pipe2(ends_, O_CLOEXEC) == 0, "pipe2"); }
    readiness(const readiness &) = delete;
    readiness &operator=(const readiness &) = delete;
    ~readiness() {
        close(ends_[0]);
        if (ends_[1] >= 0) close(ends_[1]);
    }

    // Where any byte written means ready; processes that run another program inherit it once they clear FD_CLOEXEC.
    [[nodiscard]] int announcing_end() const { return ends_[1]; }

    void announce() const { require(write(ends_[1], "", 1) == 1, "write"); }

    // Ends the program when nobody is left who could announce it.
    void wait() {
        close(std::exchange(ends_[1], -1));
        char announced = 0;
        errno = ECHILD;
        require(read(ends_[0], &announced, 1) == 1, "a process that did not get ready");
    }

  private:
    int ends_[2];
};

}  // namespace bench

#endif
