// SPDX-License-Identifier: Apache-2.0
// pmctl_calls.h: what pmctl is told to do while its answers are fuzzed, and what the answers look like in an input:
// each behind two bytes of its length.
#ifndef FUZZ_SUPPORT_PMCTL_CALLS_H
#define FUZZ_SUPPORT_PMCTL_CALLS_H

#include <span>
#include <string>

#include "command_line/command_line.h"

namespace fuzz {

// The commands; those that name an interface name one of the fixed example.
std::span<const std::string> pmctl_commands();

pmctl::invocation pmctl_call(const std::string &command, bool is_json);

}  // namespace fuzz

#endif
