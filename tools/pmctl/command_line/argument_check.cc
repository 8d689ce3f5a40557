// SPDX-License-Identifier: Apache-2.0
#include "command_line/argument_check.h"

#include <algorithm>
#include <charconv>

#include <fmt/format.h>

#include "command_line/interface_words.h"
#include "command_line/suggestion.h"
#include "command_table.h"
#include "failure.h"
#include "settings/setting_reader.h"
#include "switch/interface_types.h"

namespace pmctl {
namespace {

constexpr double shortest_wait = 0.1;
constexpr double longest_wait = 86400;

bool takes(const command &of, const std::string &name) {
    const auto is_named = [&name](const argument &each) { return each.name == name; };
    return std::any_of(of.takes.begin(), of.takes.end(), is_named) ||
           std::any_of(global_options().begin(), global_options().end(), is_named);
}

void check_choice(const argument &taken, const std::string &word) {
    const std::vector<std::string> choices(taken.choices.begin(), taken.choices.end());
    if (std::find(choices.begin(), choices.end(), word) != choices.end()) return;
    throw usage_error(fmt::format("not a value of {}: {}{}", taken.name, shown_word(word),
                                  did_you_mean(word, choices, fmt::format("; it takes {}", alternatives(choices)))));
}

// A sub-command may have been meant, or an interface of another kind.
void check_interfaces(const std::vector<std::string> &words, const command &of) {
    interfaces_named(words, words_below(of.words), fmt::format("; see pmctl {} --help", of.words));
}

void check_word(const argument &taken, const std::string &word, const command &of) {
    if (taken.content == argument_content::choice) check_choice(taken, word);
    if (taken.content == argument_content::seconds) parse_seconds(word);
    if (taken.content == argument_content::module) parse_module(word, words_below(of.words));
    if (taken.content == argument_content::type) parse_type(word);
}

void check_argument(const argument &taken, const std::vector<std::string> &words, const command &of) {
    if (words.empty()) return;
    for (const std::string &word : words) check_word(taken, word, of);
    if (taken.content == argument_content::interfaces) check_interfaces(words, of);
    if (taken.content == argument_content::setting) read_setting(words);
}

// From 1 to 255, or nothing.
std::optional<uint8_t> number_of(const std::string &text) {
    uint8_t number = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc{} && rest == end && number > 0) return number;
    return std::nullopt;
}

}  // namespace

void check_options(const command &of, const arguments &given) {
    for (const auto &[name, words] : given.all())
        if (!takes(of, name)) throw usage_error(fmt::format("{} does not take: {}", of.words, name));
}

// A word that was given may be what is wrong.
void check_presence(const command &of, const arguments &given) {
    for (const argument &each : of.takes) {
        if (!each.is_required || given.has(each.name)) continue;
        check_words(of, given);
        throw usage_error(fmt::format("{} needs {}; see pmctl {} --help", of.words, each.name, of.words));
    }
}

void check_words(const command &of, const arguments &given) {
    for (const argument &each : of.takes) check_argument(each, given.words(each.name), of);
    for (const argument &each : global_options()) check_argument(each, given.words(each.name), of);
}

double parse_seconds(const std::string &text) {
    double seconds = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    if (error == std::errc{} && rest == end && seconds >= shortest_wait && seconds <= longest_wait) return seconds;
    throw usage_error(
        fmt::format("not a number of seconds from {} to {}: {}", shortest_wait, longest_wait, shown_word(text)));
}

uint8_t parse_module(const std::string &text, const std::vector<std::string> &beside) {
    if (const auto number = number_of(text)) return *number;
    throw usage_error(fmt::format("not the number of a module, from 1 to 255: {}{}", shown_word(text),
                                  did_you_mean(text, beside, "")));
}

uint8_t parse_type(const std::string &text) {
    if (const auto type = type_of_word(text)) return *type;
    if (const auto number = number_of(text)) return *number;
    const std::string takes = fmt::format("; it takes {} or a number from 1 to 255", fmt::join(type_words(), ", "));
    throw usage_error(
        fmt::format("not a type of interfaces: {}{}", shown_word(text), did_you_mean(text, type_words(), takes)));
}

}  // namespace pmctl
