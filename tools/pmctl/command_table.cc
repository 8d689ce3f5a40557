// SPDX-License-Identifier: Apache-2.0
// One row a command; a new family is a file in commands/ and its rows here.
#include "command_table.h"

#include "commands/show_interface.h"

namespace pmctl {
namespace {

constexpr const char *json_help = "Print one JSON object instead of text";

constexpr argument interface_arguments[] = {
    {"NAME", argument_kind::words, "Interfaces or ranges of them: fc1/1-12,fc2/3 port-channel5; none: every interface"},
    {"--all", argument_kind::flag, "Show every interface"},
    {"--json", argument_kind::flag, json_help},
};

constexpr argument brief_arguments[] = {
    {"--json", argument_kind::flag, json_help},
};

constexpr command commands[] = {
    {"show", "Show what the switch knows", {}, "", nullptr},
    {"show interface", "Show all that the switch knows about interfaces", interface_arguments,
     "  pmctl show interface fc1/1\n"
     "  pmctl show interface fc1/1-12,fc2/3 port-channel1-4 mgmt0\n"
     "  pmctl show interface Ethernet2/7.100-120\n"
     "  pmctl show interface --all --json\n",
     run_show_interface},
    {"show interface brief", "Show one line for each interface", brief_arguments,
     "  pmctl show interface brief\n"
     "  pmctl show interface brief --json\n",
     run_show_interface_brief},
};

}  // namespace

std::span<const command> all_commands() { return commands; }

}  // namespace pmctl
