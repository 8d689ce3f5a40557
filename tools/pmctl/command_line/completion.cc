// SPDX-License-Identifier: Apache-2.0
#include "command_line/completion.h"

#include <strings.h>

#include "command_line/word_reader.h"
#include "command_table.h"
#include "failure.h"
#include "settings/setting_reader.h"
#include "switch/interface_types.h"

namespace pmctl {
namespace {

using candidates = std::vector<std::string>;
using name_source = std::function<candidates()>;

// Letters of either case are the same, as they are in names of interfaces.
bool may_become(const std::string &beginning, const std::string &word) {
    return strncasecmp(beginning.c_str(), word.c_str(), beginning.size()) == 0;
}

void add_commands(candidates &found, const std::string &below) {
    const candidates words = words_below(below);
    found.insert(found.end(), words.begin(), words.end());
}

// Those after words that lead to a command.
void add_commands_after(candidates &found, const candidates &words) {
    const words_read read = read_words(words);
    if (read.unknown.empty()) add_commands(found, read.words);
}

// Every name may follow the last comma of a list.
void add_interfaces(candidates &found, const std::string &typed, const name_source &interface_names) {
    const std::string list = typed.substr(0, typed.rfind(',') + 1);
    for (const std::string &name : interface_names()) found.push_back(list + name);
}

void add_types(candidates &found) {
    const candidates words = type_words();
    found.insert(found.end(), words.begin(), words.end());
}

void add_setting_words(candidates &found, const candidates &words) {
    const candidates next = words_after(words);
    found.insert(found.end(), next.begin(), next.end());
}

// What may be typed for an argument.
void add_values(candidates &found, const argument &of, const arguments &given, const std::string &typed,
                const name_source &interface_names) {
    switch (of.content) {
        case argument_content::choice:
            found.insert(found.end(), of.choices.begin(), of.choices.end());
            break;
        case argument_content::interfaces:
            add_interfaces(found, typed, interface_names);
            break;
        case argument_content::type:
            add_types(found);
            break;
        case argument_content::setting:
            add_setting_words(found, given.words(of.name));
            break;
        case argument_content::command:
            add_commands_after(found, given.words(of.name));
            break;
        default:
            break;
    }
}

// "--color=auto" and so on for "--color=a".
candidates option_values(const words_read &read, const std::string &typed, const name_source &interface_names) {
    const size_t begin = typed.find('=') + 1;
    candidates found;
    for (const argument *each : options_of(read.reached))
        if (typed.substr(0, begin - 1) == each->name)
            add_values(found, *each, read.given, typed.substr(begin), interface_names);
    for (std::string &each : found) each.insert(0, typed, 0, begin);
    return found;
}

candidates options(const words_read &read) {
    candidates found;
    for (const argument *each : options_of(read.reached))
        if (!read.given.has(each->name)) found.emplace_back(each->name);
    return found;
}

candidates after(const words_read &read, const std::string &typed, const name_source &interface_names) {
    candidates found;
    if (read.option_in_wait != nullptr) {
        add_values(found, *read.option_in_wait, read.given, typed, interface_names);
        return found;
    }
    if (!read.after_separator && typed.starts_with('-'))
        return typed.find('=') == std::string::npos ? options(read) : option_values(read, typed, interface_names);
    if (!read.after_separator) add_commands(found, read.words);
    if (const argument *place = place_of(read.reached, read.given, typed))
        add_values(found, *place, read.given, typed, interface_names);
    return found;
}

}  // namespace

std::vector<std::string> completions(const std::vector<std::string> &words, const name_source &interface_names) try {
    if (words.empty()) return {};
    const words_read read = read_words({words.begin(), words.end() - 1});
    if (!read.unknown.empty()) return {};
    candidates found = after(read, words.back(), interface_names);
    std::erase_if(found, [&words](const std::string &each) { return !may_become(words.back(), each); });
    return found;
} catch (const usage_error &) {
    return {};
}

}  // namespace pmctl
