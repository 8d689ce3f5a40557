// SPDX-License-Identifier: Apache-2.0
#include "watch/watch.h"

#include <algorithm>

#include <fmt/core.h>

#include "command_line/argument_check.h"
#include "outcome.h"
#include "output/printable_text.h"
#include "output/render.h"
#include "watch/change_marks.h"
#include "watch/drawing.h"

namespace pmctl {
namespace {

bool has_rows(const view &of) {
    return std::any_of(of.sheets.begin(), of.sheets.end(), [](const sheet &each) { return !each.rows.empty(); });
}

// One run of `watch`.
class watcher {
  public:
    watcher(const invocation &call, watch_surroundings &surroundings)
        : call_(call), surroundings_(surroundings), seconds_(call.given.word("--watch")) {}

    exit_status run() {
        const exit_status status = repeat();
        if (draws_over_) surroundings_.write_last(below_drawing);
        return status;
    }

  private:
    exit_status repeat() {
        const auto interval =
            std::chrono::duration_cast<steady_interval>(std::chrono::duration<double>(parse_seconds(seconds_)));
        for (steady_time drawn = surroundings_.now();; drawn = next_drawing(drawn, interval, surroundings_.now())) {
            surroundings_.wait_until(drawn, draws_over_);
            if (surroundings_.is_over()) return exit_done;
            answer found = run_command(call_, run_);
            if (surroundings_.is_over()) return exit_done;  // which the answer may suffer from
            if (found.status == exit_usage) {
                tell(found.messages);
                return exit_usage;
            }
            if (!show(std::move(found))) return exit_failed;
        }
    }

    void tell(const std::vector<std::string> &messages) {
        for (const std::string &message : messages) surroundings_.tell(message);
    }

    // Returns false when the output cannot be written.
    bool show(answer found) {
        const view unmarked = found.output;
        if (has_rows(before_)) mark_changes(found.output, before_);
        if (has_rows(unmarked)) before_ = unmarked;
        const terminal screen = surroundings_.screen();
        draws_over_ = screen.height > 0 && found.output.text.empty();
        const std::string text = draws_over_ ? on_screen(found, screen) : one_after_another(found, screen);
        const std::string failure = surroundings_.write(text);
        if (!failure.empty()) surroundings_.tell(failure);
        return failure.empty();
    }

    std::string on_screen(const answer &found, const terminal &screen) const {
        std::string text =
            fmt::format("Every {}s: {}   {}\n\n", seconds_, printable_text(call_.typed), surroundings_.time_of_day());
        for (const std::string &message : found.messages) text += message_line(message);
        return screen_drawing(text + render(found.output, screen), screen);
    }

    std::string one_after_another(const answer &found, const terminal &screen) {
        tell(found.messages);
        const std::string text = render(found.output, screen);
        const bool parted = has_drawn_ && has_rows(found.output);
        has_drawn_ = has_drawn_ || has_rows(found.output);
        return parted ? "\n" + text : text;
    }

    const invocation &call_;
    command_function run_ = call_.what->watched == nullptr ? call_.what->run : call_.what->watched();
    watch_surroundings &surroundings_;
    std::string seconds_;
    view before_;
    bool has_drawn_ = false;
    bool draws_over_ = false;
};

}  // namespace

exit_status watch(const invocation &call, watch_surroundings &surroundings) {
    return watcher(call, surroundings).run();
}

steady_time next_drawing(steady_time last, steady_interval interval, steady_time now) {
    return now < last ? last : last + interval * ((now - last) / interval + 1);
}

}  // namespace pmctl
