// SPDX-License-Identifier: Apache-2.0
// rival.h: one way to exchange a request and its answer, ours or another.
#ifndef BENCH_EXCHANGE_RIVAL_H
#define BENCH_EXCHANGE_RIVAL_H

#include <cstddef>
#include <functional>
#include <string>

#include "bench/support/child_process.h"
#include "bench/support/readiness.h"

namespace bench {

struct payload_sizes {
    size_t request;
    size_t answer;
};

// Sends one request and takes its answer.
using exchange = std::function<void()>;

// Serves until the process is killed; announces when clients can connect.
using service = std::function<void(const readiness &ready)>;

struct rival {
    std::string name;
    std::function<exchange()> connect;  // makes a client, in the process that calls
    service serve{};                    // runs in a process of its own; none where one serves already
};

class server_process {
  public:
    explicit server_process(const service &serve) : process_([&] { serve(ready_); }) { ready_.wait(); }

  private:
    readiness ready_;
    child_process process_;
};

}  // namespace bench

#endif
