// SPDX-License-Identifier: Apache-2.0
// pmctl: the command-line client of the port manager.
#include <csignal>
#include <cstdio>
#include <exception>

#include "failure.h"
#include "outcome.h"
#include "output/own_output.h"
#include "watch/live_surroundings.h"

namespace {

pmctl::exit_status show_once(const pmctl::invocation &call, pmctl::own_output &output, const pmctl::terminal &on) {
    pmctl::outcome outcome = pmctl::carry_out(call, on);
    if (const std::string failure = output.write(outcome.output); !failure.empty()) {
        outcome.status = pmctl::exit_failed;
        outcome.messages.push_back(failure);
    }
    for (const std::string &message : outcome.messages) fputs(pmctl::message_line(message).c_str(), stderr);
    return outcome.status;
}

pmctl::exit_status run(int argc, char **argv, pmctl::own_output &output) {
    const pmctl::invocation call = pmctl::parse_command_line(argc, argv);
    const std::string colour_option = call.given.word("--color");
    if (call.given.has("--verbose")) output.show_diagnostics();
    if (call.what == nullptr || !call.given.has("--watch"))
        return show_once(call, output, pmctl::terminal_at(output.descriptor(), colour_option));
    pmctl::live_surroundings surroundings(output, colour_option);
    return pmctl::watch(call, surroundings);
}

pmctl::exit_status refuse(const std::exception &error, pmctl::exit_status status) {
    fputs(pmctl::message_line(error.what()).c_str(), stderr);
    return status;
}

}  // namespace

int main(int argc, char **argv) {
    pmctl::own_output output;
    std::signal(SIGPIPE, SIG_IGN);  // a reader that goes away is seen at the write
    try {
        return run(argc, argv, output);
    } catch (const pmctl::usage_error &error) {
        return refuse(error, pmctl::exit_usage);
    } catch (const std::exception &error) {
        return refuse(error, pmctl::exit_failed);
    }
}
