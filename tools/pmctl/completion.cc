// SPDX-License-Identifier: Apache-2.0
#include "completion.h"

#include <strings.h>

#include "command_table.h"
#include "failure.h"
#include "word_reader.h"

namespace pmctl {
namespace {

using candidates = std::vector<std::string>;
using name_source = std::function<candidates()>;

// Letters of either case are the same, as they are in names of interfaces.
bool may_become(const std::string &beginning, const std::string &word) {
    return strncasecmp(beginning.c_str(), word.c_str(), beginning.size()) == 0;
}

void add_commands(candidates &found, const std::string &below) {
    for (const command *each : commands_below(below))
        if (!is_hidden(*each)) found.emplace_back(last_word(*each));
}

// Every name may follow the last comma of a list.
void add_interfaces(candidates &found, const std::string &typed, const name_source &interface_names) {
    const std::string list = typed.substr(0, typed.rfind(',') + 1);
    for (const std::string &name : interface_names()) found.push_back(list + name);
}

// The command that the words of `help` have come to.
std::string command_in(const candidates &words) {
    word_reader reader;
    for (const std::string &word : words) reader.take(word);
    return reader.words();
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
        case argument_content::command:
            add_commands(found, command_in(given.words(of.name)));
            break;
        default:
            break;
    }
}

// "--color=auto" and so on for "--color=a".
candidates option_values(const word_reader &reader, const std::string &typed, const name_source &interface_names) {
    const size_t begin = typed.find('=') + 1;
    const argument *option = find_option(reader.reached(), typed.substr(0, begin - 1));
    candidates found;
    if (option != nullptr) add_values(found, *option, reader.given(), typed.substr(begin), interface_names);
    for (std::string &each : found) each.insert(0, typed, 0, begin);
    return found;
}

candidates options(const word_reader &reader) {
    candidates found;
    for (const argument *each : options_of(reader.reached()))
        if (!reader.given().has(each->name)) found.emplace_back(each->name);
    return found;
}

candidates after(const word_reader &reader, const std::string &typed, const name_source &interface_names) {
    candidates found;
    if (reader.option_in_wait() != nullptr) {
        add_values(found, *reader.option_in_wait(), reader.given(), typed, interface_names);
        return found;
    }
    if (reader.takes_options() && typed.starts_with('-'))
        return typed.find('=') == std::string::npos ? options(reader) : option_values(reader, typed, interface_names);
    if (reader.takes_options()) add_commands(found, reader.words());
    if (const argument *place = reader.next_in_place())
        add_values(found, *place, reader.given(), typed, interface_names);
    return found;
}

}  // namespace

std::vector<std::string> completions(const std::vector<std::string> &words, const name_source &interface_names) try {
    if (words.empty()) return {};
    word_reader reader;
    for (size_t i = 0; i + 1 < words.size(); ++i) reader.take(words[i]);
    candidates found = after(reader, words.back(), interface_names);
    std::erase_if(found, [&words](const std::string &each) { return !may_become(words.back(), each); });
    return found;
} catch (const usage_error &) {
    return {};
}

}  // namespace pmctl
