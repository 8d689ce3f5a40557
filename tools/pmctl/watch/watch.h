// SPDX-License-Identifier: Apache-2.0
// Carries a command out again and again, and shows what changed.
#ifndef PMCTL_WATCH_WATCH_H
#define PMCTL_WATCH_WATCH_H

#include <chrono>

#include "command_line/command_line.h"
#include "outcome.h"
#include "output/terminal.h"

namespace pmctl {

using steady_time = std::chrono::steady_clock::time_point;
using steady_interval = std::chrono::steady_clock::duration;

// What watching has to do with its surroundings.
class watch_surroundings {
  public:
    virtual ~watch_surroundings() = default;

    [[nodiscard]] virtual terminal screen() const = 0;  // as it is now
    [[nodiscard]] virtual steady_time now() const = 0;
    [[nodiscard]] virtual std::string time_of_day() const = 0;

    // Whether watching is to end.
    [[nodiscard]] virtual bool is_over() const = 0;

    // Returns at that time, or before it when watching is to end or, for what is drawn over a screen, when the screen
    // gets another size.
    virtual void wait_until(steady_time when, bool on_screen) = 0;

    // Returns why it failed, or nothing.
    virtual std::string write(const std::string &text) = 0;

    // Writes the text that leaves a screen in order, unless that would hold up the end.
    virtual void write_last(const std::string &text) = 0;

    virtual void tell(const std::string &message) = 0;
};

// Draws at once and then every interval of the command's --watch, until watching is to end, the command line proves
// wrong or the output cannot be written. Returns the exit status. Throws usage_error.
exit_status watch(const invocation &call, watch_surroundings &surroundings);

// The first time after `now` that is a whole number of intervals after `last`, or `last` when it is still to come.
steady_time next_drawing(steady_time last, steady_interval interval, steady_time now);

}  // namespace pmctl

#endif
