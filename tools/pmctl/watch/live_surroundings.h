// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_WATCH_LIVE_SURROUNDINGS_H
#define PMCTL_WATCH_LIVE_SURROUNDINGS_H

#include <csignal>

#include "output/own_output.h"
#include "watch/watch.h"

namespace pmctl {

// The real ones: watching is over after SIGINT or SIGTERM, and when the reader of the output has gone. A second signal
// ends the program at once, also from a write that blocks because the first one came between the check and the call.
// One a process.
class live_surroundings : public watch_surroundings {
  public:
    live_surroundings(own_output &output, std::string colour_option);

    [[nodiscard]] terminal screen() const override;
    [[nodiscard]] steady_time now() const override;
    [[nodiscard]] std::string time_of_day() const override;
    [[nodiscard]] bool is_over() const override;
    void wait_until(steady_time when, bool on_screen) override;
    std::string write(const std::string &text) override;
    void write_last(const std::string &text) override;
    void tell(const std::string &message) override;

  private:
    own_output &output_;
    std::string colour_option_;
    bool reader_has_gone_ = false;
    sigset_t with_resizes_{};  // what is blocked in a wait that ends when the screen gets another size
};

}  // namespace pmctl

#endif
