// SPDX-License-Identifier: Apache-2.0
#include "command_line/argument_check.h"

#include <algorithm>
#include <charconv>

#include <fmt/core.h>

#include "command_line/suggestion.h"
#include "command_table.h"
#include "failure.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

constexpr double shortest_wait = 0.1;
constexpr double longest_wait = 86400;

constexpr std::string_view digits = "0123456789";

// Abbreviations are what typing errors are made in, too.
constexpr const char *interface_kinds[] = {"fc", "Ethernet", "eth", "port-channel", "po", "fcip", "mgmt", "loopback"};

bool takes(const command &of, const std::string &name) {
    const auto is_named = [&name](const argument &each) { return each.name == name; };
    return std::any_of(of.takes.begin(), of.takes.end(), is_named) ||
           std::any_of(global_options().begin(), global_options().end(), is_named);
}

bool are_interfaces(const std::string &text) try {
    parse_interface_ranges(text);
    return true;
} catch (const usage_error &) {
    return false;
}

// "fc1/1" for "fx1/1": what the name is with a kind that exists.
std::vector<std::string> with_other_kinds(const std::string &name) {
    const size_t end = std::min(name.find_first_of(digits), name.size());
    const std::vector<std::string> kinds(std::begin(interface_kinds), std::end(interface_kinds));
    std::vector<std::string> names;
    for (const std::string &kind : nearest(name.substr(0, end), kinds))
        if (are_interfaces(kind + name.substr(end))) names.push_back(kind + name.substr(end));
    return names;
}

// A sub-command may have been meant, or an interface of another kind.
std::string meant_instead(const std::string &name, const command &of) {
    std::vector<std::string> meant = nearest(name, words_below(of.words));
    for (const std::string &other : with_other_kinds(name)) meant.push_back(other);
    return meant.empty() ? fmt::format("; see pmctl {} --help", of.words)
                         : fmt::format("; did you mean {}?", alternatives(meant));
}

void check_interfaces(const std::string &list, const command &of) try {
    parse_interface_ranges(list);
} catch (const unknown_name &error) {
    throw usage_error(error.what() + meant_instead(error.name(), of));
}

void check_choice(const argument &taken, const std::string &word) {
    const std::vector<std::string> choices(taken.choices.begin(), taken.choices.end());
    if (std::find(choices.begin(), choices.end(), word) != choices.end()) return;
    throw usage_error(fmt::format("not a value of {}: {}{}", taken.name, shown_word(word),
                                  did_you_mean(word, choices, fmt::format("; it takes {}", alternatives(choices)))));
}

void check_word(const argument &taken, const std::string &word, const command &of) {
    if (taken.content == argument_content::choice) check_choice(taken, word);
    if (taken.content == argument_content::seconds) parse_seconds(word);
    if (taken.content == argument_content::interfaces) check_interfaces(word, of);
}

}  // namespace

void check_options(const command &of, const arguments &given) {
    for (const auto &[name, words] : given.all())
        if (!takes(of, name)) throw usage_error(fmt::format("{} does not take: {}", of.words, name));
}

void check_words(const command &of, const arguments &given) {
    for (const argument &each : of.takes)
        for (const std::string &word : given.words(each.name)) check_word(each, word, of);
    for (const argument &each : global_options())
        for (const std::string &word : given.words(each.name)) check_word(each, word, of);
}

double parse_seconds(const std::string &text) {
    double seconds = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    if (error == std::errc{} && rest == end && seconds >= shortest_wait && seconds <= longest_wait) return seconds;
    throw usage_error(
        fmt::format("not a number of seconds from {} to {}: {}", shortest_wait, longest_wait, shown_word(text)));
}

}  // namespace pmctl
