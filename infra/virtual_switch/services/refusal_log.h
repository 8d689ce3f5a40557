// SPDX-License-Identifier: Apache-2.0
// refusal_log.h: what is said of requests that were refused.
#ifndef VIRTUAL_SWITCH_SERVICES_REFUSAL_LOG_H
#define VIRTUAL_SWITCH_SERVICES_REFUSAL_LOG_H

#include <chrono>
#include <cstdint>
#include <string>

namespace virtual_switch {

// Who may only ask can ask for what is refused as often as a socket carries it. So only the first refusals of each
// period are said, and the next period begins with the number of the others.
class refusal_log {
  public:
    using clock = std::chrono::steady_clock;
    static constexpr unsigned most_in_period = 20;
    static constexpr std::chrono::seconds period{10};

    void add(const std::string &refusal, clock::time_point now = clock::now());

  private:
    clock::time_point period_end_ = clock::time_point::min();
    unsigned said_ = 0;
    uint64_t unsaid_ = 0;
};

}  // namespace virtual_switch

#endif
