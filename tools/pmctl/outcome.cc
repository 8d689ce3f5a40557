// SPDX-License-Identifier: Apache-2.0
#include "outcome.h"

#include <fmt/core.h>

#include <new>

#include "command_line/argument_check.h"
#include "failure.h"
#include "output/printable_text.h"
#include "output/render.h"

namespace pmctl {

answer run_command(const invocation &call, const command_function &run) try {
    if (call.what == nullptr) return {exit_done, {{}, call.text}, {}};
    check_words(*call.what, call.given);
    command_result result = run(call.given);
    return {result.failures.empty() ? exit_done : exit_failed, std::move(result.output), std::move(result.failures)};
} catch (const usage_errors &errors) {
    return {exit_usage, {}, errors.lines()};
} catch (const usage_error &error) {
    return {exit_usage, {}, {error.what()}};
} catch (const std::bad_alloc &) {
    return {exit_failed, {}, {"out of memory"}};
} catch (const std::exception &error) {
    return {exit_failed, {}, {error.what()}};
}

outcome carry_out(const invocation &call, const terminal &on) try {
    answer found = run_command(call, call.what == nullptr ? nullptr : call.what->run);
    return {found.status, render(found.output, on), std::move(found.messages)};
} catch (const std::bad_alloc &) {
    return {exit_failed, {}, {"out of memory"}};
}

std::string message_line(const std::string &message) { return fmt::format("pmctl: {}\n", printable_text(message)); }

}  // namespace pmctl
