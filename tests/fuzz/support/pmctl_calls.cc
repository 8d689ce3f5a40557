// SPDX-License-Identifier: Apache-2.0
#include "support/pmctl_calls.h"

#include <vector>

#include "settings/line_words.h"

namespace fuzz {

std::span<const std::string> pmctl_commands() {
    static const std::vector<std::string> commands{
        "show interface",
        "show interface brief",
        "show interface fc1/1",
        "show interface transceiver",
        "show interface transceiver details fc1/1",
        "show interface Ethernet2/1 capabilities",
        "show interface counters",
        "show interface index",
        "show running-config",
        "show module 1 interfaces",
        "show module resources",
        "config interface fc1/1 shutdown",
        "config subinterface create Ethernet2/5.5",
        "config loopback create loopback1",
        "clear counters Ethernet2/1",
        "show interface counters Ethernet2/1",
        "show interface transceiver details Ethernet2/1",
    };
    return commands;
}

pmctl::invocation pmctl_call(const std::string &command, bool is_json) {
    std::vector<std::string> words = pmctl::line_words("pmctl " + command + (is_json ? " --json" : ""));
    std::vector<const char *> argv;
    for (const std::string &word : words) argv.push_back(word.c_str());
    return pmctl::parse_command_line(static_cast<int>(argv.size()), argv.data());
}

}  // namespace fuzz
