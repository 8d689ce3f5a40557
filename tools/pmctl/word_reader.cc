// SPDX-License-Identifier: Apache-2.0
#include "word_reader.h"

#include <fmt/core.h>

#include "command_table.h"
#include "failure.h"
#include "suggestion.h"

namespace pmctl {
namespace {

const argument *option_named(std::span<const argument> among, std::string_view name) {
    for (const argument &each : among)
        if (is_option(each) && each.name == name) return &each;
    return nullptr;
}

// "-" and negative numbers are no options.
bool is_option_word(std::string_view word) {
    return word.size() > 1 && word[0] == '-' && (word[1] < '0' || word[1] > '9');
}

}  // namespace

const argument *find_option(const command *of, std::string_view name) {
    if (name == "-h") name = "--help";
    if (const argument *found = option_named(global_options(), name)) return found;
    if (of != nullptr)
        if (const argument *found = option_named(of->takes, name)) return found;
    for (const command &other : all_commands())
        if (const argument *found = option_named(other.takes, name)) return found;
    return nullptr;
}

std::vector<const argument *> options_of(const command *of) {
    std::vector<const argument *> options;
    if (of != nullptr)
        for (const argument &each : of->takes)
            if (is_option(each)) options.push_back(&each);
    for (const argument &each : global_options()) options.push_back(&each);
    return options;
}

void word_reader::take(const std::string &word) {
    if (option_in_wait_ != nullptr)
        add_value(*option_in_wait_, word);
    else if (after_separator_)
        fill_place(word);
    else if (word == "--")
        after_separator_ = true;
    else if (is_option_word(word))
        take_option(word);
    else if (!descend(word))
        fill_place(word);
}

const command *word_reader::reached() const { return find_command(words_); }

const argument *word_reader::next_in_place() const {
    if (reached() == nullptr) return nullptr;
    for (const argument &each : reached()->takes)
        if (each.kind == argument_kind::words || (each.kind == argument_kind::word && !given_.has(each.name)))
            return &each;
    return nullptr;
}

std::string word_reader::help_hint() const {
    return words_.empty() ? "pmctl --help" : fmt::format("pmctl {} --help", words_);
}

void word_reader::take_option(const std::string &word) {
    const size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const argument *option = find_option(reached(), name);
    if (option == nullptr) refuse_option(name);
    if (option->kind == argument_kind::flag && equals != std::string::npos)
        throw usage_error(fmt::format("{} takes no value: {}", name, word));
    if (option->kind == argument_kind::flag)
        given_.set(option->name);
    else if (equals != std::string::npos)
        add_value(*option, word.substr(equals + 1));
    else
        option_in_wait_ = option;
}

void word_reader::add_value(const argument &option, const std::string &value) {
    if (given_.has(option.name)) throw usage_error(fmt::format("{} is given twice", option.name));
    given_.add(option.name, value);
    option_in_wait_ = nullptr;
}

bool word_reader::descend(const std::string &word) {
    const std::string longer = words_.empty() ? word : words_ + " " + word;
    if (find_command(longer) == nullptr) return false;
    words_ = longer;
    return true;
}

void word_reader::fill_place(const std::string &word) {
    const argument *place = next_in_place();
    if (place == nullptr) refuse_word(word);
    given_.add(place->name, word);
}

void word_reader::refuse_option(const std::string &name) const {
    std::vector<std::string> known;
    for (const argument *each : options_of(reached())) known.emplace_back(each->name);
    throw usage_error(fmt::format("not a known word here: {}{}", name,
                                  did_you_mean(name, known, fmt::format("; see {}", help_hint()))));
}

void word_reader::refuse_word(const std::string &word) const {
    std::vector<std::string> known;
    for (const command *each : commands_below(words_))
        if (!is_hidden(*each)) known.emplace_back(last_word(*each));
    if (known.empty()) throw usage_error(fmt::format("{} does not take: {}", words_, word));
    throw usage_error(fmt::format("not a known word here: {}{}", word,
                                  did_you_mean(word, known, fmt::format("; see {}", help_hint()))));
}

}  // namespace pmctl
