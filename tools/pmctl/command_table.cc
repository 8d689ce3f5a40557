// SPDX-License-Identifier: Apache-2.0
// One row a command; a new family is a file in commands/ and its rows here.
#include "command_table.h"

#include <algorithm>

#include "commands/complete.h"
#include "commands/config.h"
#include "commands/help.h"
#include "commands/show_capabilities.h"
#include "commands/show_counters.h"
#include "commands/show_host_interface.h"
#include "commands/show_interface.h"
#include "commands/show_inventory.h"
#include "commands/show_module.h"
#include "commands/show_reasons.h"
#include "commands/show_running_config.h"
#include "commands/show_transceiver.h"

namespace pmctl {
namespace {

using enum argument_kind;
using content = argument_content;

constexpr const char *colour_choices[] = {"auto", "always", "never"};

constexpr argument options_of_all[] = {
    {"--color", option, "Colours: auto (on a terminal), always or never", content::choice, colour_choices, "WHEN"},
    {"--help", flag, "Explain the command instead of running it; also -h"},
    {"--verbose", flag, "Print the diagnostics of the library on standard error"},
    {"--version", flag, "Print the version instead of running a command"},
};

// For the commands that ask the switch.
constexpr argument watch_option = {
    "--watch",        option, "Show it again every so many seconds, 0.1 to 86400, with what changed marked",
    content::seconds, {},     "SECONDS"};

constexpr argument optional_names = {
    "NAME", words, "Interfaces or ranges of them: fc1/1-12,fc2/3 port-channel5; none: every interface",
    content::interfaces};

constexpr argument json_flag = {"--json", flag, "Print one JSON object instead of text"};

constexpr argument complete_arguments[] = {
    {"WORD", words, "The words of a command line up to the one to complete"},
};

// Of the commands that configure.
constexpr argument configured_interfaces = {
    "RANGE", words, "Interfaces or ranges of them: fc1/1-12, fc2/3 port-channel5", content::interfaces, {}, "", true};

constexpr argument file_arguments[] = {
    {"FILE",
     word,
     "A file of lines as show running-config prints them; -: standard input",
     content::file,
     {},
     "",
     true},
};

constexpr argument setting_arguments[] = {
    configured_interfaces,
    {"SETTING", words, "What to set, and its value", content::setting, {}, "", true},
};

constexpr argument created_arguments[] = {configured_interfaces};

constexpr argument help_arguments[] = {
    {"COMMAND", words, "The words of the command; none: all commands", content::command},
};

constexpr argument interface_arguments[] = {
    optional_names,
    {"--all", flag, "Show every interface"},
    json_flag,
    watch_option,
};

constexpr argument brief_arguments[] = {json_flag, watch_option};

constexpr argument capability_arguments[] = {
    {"NAME", words, "Interfaces or ranges of them: fc1/1-12,fc2/3 port-channel5", content::interfaces},
    {"--all", flag, "Show every interface of the switch"},
    json_flag,
    watch_option,
};

constexpr argument reason_arguments[] = {
    {"--all", flag, "Show the codes without a meaning, too"},
    json_flag,
};

constexpr const char *module_choices[] = {"interfaces"};

constexpr argument module_arguments[] = {
    {"N", word, "The number of the module, counted from 1", content::module, {}, "", true},
    {"interfaces", word, "This word", content::choice, module_choices, "", true},
    json_flag,
};

constexpr argument index_arguments[] = {
    {"--type", option, "Show one type of interfaces: a word such as ethernet, or a number", content::type, {}, "TYPE"},
    json_flag,
    watch_option,
};

constexpr argument counter_arguments[] = {
    {"NAME", words, "Interfaces or ranges of them: Ethernet4/1-12, fcip3; none: every one that has counters",
     content::interfaces},
    json_flag,
    watch_option,
};

constexpr argument transceiver_arguments[] = {
    {"NAME", words, "Interfaces or ranges of them: fc1/1-12, Ethernet4/1; none: every one that takes a transceiver",
     content::interfaces},
    json_flag,
    watch_option,
};

constexpr argument resource_arguments[] = {
    {"N", word, "The number of a module, counted from 1; none: every module", content::module},
    json_flag,
};

constexpr argument host_interface_arguments[] = {
    {"NAME", word, "The kernel's name of a network interface of this machine", content::text, {}, "", true},
    json_flag,
    watch_option,
};

constexpr argument cleared_arguments[] = {
    {"RANGE", words, "Interfaces or ranges of them: Ethernet4/1-12, fcip3", content::interfaces, {}, "", true},
};

constexpr argument running_config_arguments[] = {optional_names};

constexpr command commands[] = {
    {"clear", "Set back what the switch counts", {}, "", nullptr},
    {"clear counters", "Set the counters of interfaces to 0", cleared_arguments,
     "  pmctl clear counters Ethernet4/1-12, fcip3\n", run_clear_counters},
    {"complete", "", complete_arguments, "", run_complete},
    {"config", "Change the configuration, by the lines of a file", file_arguments,
     "  pmctl config lab.cfg\n"
     "  pmctl show running-config > lab.cfg\n"
     "  ssh lab pmctl show running-config | pmctl config -\n",
     run_config_file},
    {"config interface", "Change a setting of interfaces", setting_arguments,
     "  pmctl config interface fc1/1-4, fc2/1 no shutdown\n"
     "  pmctl config interface fc1/1 switchport mode E\n"
     "  pmctl config interface Ethernet4/7 description uplink to the core\n"
     "  pmctl config interface port-channel5 speed auto max 4000\n",
     run_config_interface},
    {"config loopback", "Create or delete loopbacks", {}, "", nullptr},
    {"config loopback create", "Create loopbacks", created_arguments, "  pmctl config loopback create loopback2-5\n",
     run_create_loopbacks},
    {"config loopback delete", "Delete loopbacks", created_arguments, "  pmctl config loopback delete loopback2\n",
     run_delete_loopbacks},
    {"config subinterface", "Create or delete sub-interfaces", {}, "", nullptr},
    {"config subinterface create", "Create sub-interfaces", created_arguments,
     "  pmctl config subinterface create Ethernet4/7.100-120 port-channel20.30\n", run_create_sub_interfaces},
    {"config subinterface delete", "Delete sub-interfaces", created_arguments,
     "  pmctl config subinterface delete Ethernet4/7.100-120\n", run_delete_sub_interfaces},
    {"help", "Explain a command", help_arguments,
     "  pmctl help\n"
     "  pmctl help show interface\n",
     run_help},
    {"show", "Show what the switch knows", {}, "", nullptr},
    {"show host", "Show what this machine knows", {}, "", nullptr},
    {"show host interface", "Show the counters of a network interface of this machine", host_interface_arguments,
     "  pmctl show host interface lo\n"
     "  pmctl show host interface eth0 --watch 1\n",
     run_show_host_interface},
    {"show interface", "Show all that the switch knows about interfaces", interface_arguments,
     "  pmctl show interface fc1/1\n"
     "  pmctl show interface fc1/1-12,fc2/3 port-channel5 mgmt0\n"
     "  pmctl show interface Ethernet4/7.100-120\n"
     "  pmctl show interface --all --json\n",
     run_show_interface},
    {"show interface brief", "Show one line for each interface", brief_arguments,
     "  pmctl show interface brief\n"
     "  pmctl show interface brief --json\n"
     "  pmctl show interface brief --watch 2\n",
     run_show_interface_brief},
    {"show interface capabilities", "Show what interfaces support, known by their kind", capability_arguments,
     "  pmctl show interface capabilities fc1/1-2 Ethernet4/1\n"
     "  pmctl show interface capabilities --all --json\n",
     run_show_capabilities},
    {"show interface counters", "Show what is counted of Ethernet-like ports and FCIP tunnels", counter_arguments,
     "  pmctl show interface counters\n"
     "  pmctl show interface counters Ethernet4/1-4 fcip3 --watch 1\n"
     "  pmctl show interface counters --json\n",
     run_show_counters, watched_counters},
    {"show interface index", "Show the indexes of interfaces, by their type", index_arguments,
     "  pmctl show interface index\n"
     "  pmctl show interface index --type ethernet --json\n",
     run_show_index},
    {"show interface reasons", "Show why ports can be in a state: codes, keywords, messages", reason_arguments,
     "  pmctl show interface reasons\n"
     "  pmctl show interface reasons --all --json\n",
     run_show_reasons},
    {"show interface transceiver", "Show one line for each transceiver, with its readings", transceiver_arguments,
     "  pmctl show interface transceiver\n"
     "  pmctl show interface transceiver fc1/1-4 --watch 5\n",
     run_show_transceiver},
    {"show interface transceiver details", "Show all about transceivers, thresholds included", transceiver_arguments,
     "  pmctl show interface transceiver details fc1/1\n"
     "  pmctl show interface transceiver details --json\n",
     run_show_transceiver_details},
    {"show module", "Show one line for each interface of a module", module_arguments,
     "  pmctl show module 3 interfaces\n"
     "  pmctl show module 3 interfaces --json\n",
     run_show_module},
    {"show module resources", "Show how much of the resources of modules is in use", resource_arguments,
     "  pmctl show module resources\n"
     "  pmctl show module resources 3 --json\n",
     run_show_resources},
    {"show running-config", "Show the settings of interfaces as command lines", running_config_arguments,
     "  pmctl show running-config\n"
     "  pmctl show running-config fc1/1-4 port-channel5\n",
     run_show_running_config},
};

// Whether `each` has the words of `head` and one more.
bool is_below(const command &each, std::string_view head) {
    const size_t begin = head.empty() ? 0 : head.size() + 1;
    return each.words.size() > begin && each.words.starts_with(head) && (begin == 0 || each.words[begin - 1] == ' ') &&
           each.words.find(' ', begin) == std::string_view::npos;
}

}  // namespace

std::span<const command> all_commands() { return commands; }

std::span<const argument> global_options() { return options_of_all; }

const command *find_command(std::string_view words) {
    const auto found = std::find_if(std::begin(commands), std::end(commands),
                                    [words](const command &each) { return each.words == words; });
    return found == std::end(commands) ? nullptr : found;
}

std::vector<std::string> words_below(std::string_view head) {
    std::vector<std::string> words;
    for (const command &each : commands)
        if (is_below(each, head) && !is_hidden(each)) words.emplace_back(each.words.substr(each.words.rfind(' ') + 1));
    return words;
}

}  // namespace pmctl
