// SPDX-License-Identifier: Apache-2.0
// pmctl: the command-line client of the port manager.
#include <cstdio>

#include "failure.h"
#include "outcome.h"
#include "output/own_output.h"

namespace {

pmctl::outcome parse_and_carry_out(int argc, char **argv, pmctl::own_output &output) try {
    const pmctl::invocation call = pmctl::parse_command_line(argc, argv);
    if (call.given.has("--verbose")) output.show_diagnostics();
    return pmctl::carry_out(call, pmctl::terminal_at(output.descriptor(), call.given.word("--color")));
} catch (const pmctl::usage_error &error) {
    return {pmctl::exit_usage, {}, {error.what()}};
}

}  // namespace

int main(int argc, char **argv) {
    pmctl::own_output output;
    pmctl::outcome outcome = parse_and_carry_out(argc, argv, output);
    if (const std::string failure = output.write(outcome.output); !failure.empty()) {
        outcome.status = pmctl::exit_failed;
        outcome.messages.push_back(failure);
    }
    for (const std::string &message : outcome.messages) fputs(pmctl::message_line(message).c_str(), stderr);
    return outcome.status;
}
