// SPDX-License-Identifier: Apache-2.0
// The only file that knows CLI11, which takes long to compile.
#include "command_line/word_reader.h"

#include <algorithm>

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <span>

#include "command_line/interface_words.h"
#include "command_line/suggestion.h"
#include "command_table.h"
#include "failure.h"

namespace pmctl {
namespace {

constexpr const char *separator = "--";
constexpr const char *subcommand_terminator = "++";  // of the parser, and no word of ours
const std::string hidden_terminator("++\0", 3);      // what nobody can type stands for it

// "--color" in "--color=auto".
std::string name_in(const std::string &word) { return word.substr(0, word.find('=')); }

// "-" and negative numbers are no options.
bool is_option_word(const std::string &word) {
    return word.size() > 1 && word[0] == '-' && (word[1] < '0' || word[1] > '9');
}

// The parser, built from the command table: a node a command. Options hang on the root, so that they may stand
// anywhere; which of them a command takes is checked later. What is neither option nor command is left over: it fills
// places, or is unknown.
class command_tree {
  public:
    command_tree() {
        app_.set_help_flag();
        set_up(&app_);
        for (const argument &each : global_options()) add_option(each);
        for (const command &each : all_commands()) add_command(each);
    }

    words_read read(const std::vector<std::string> &typed) {
        const auto end = std::find(typed.begin(), typed.end(), separator);
        std::vector<std::string> words(typed.begin(), end);
        std::replace(words.begin(), words.end(), std::string("-h"), std::string("--help"));
        std::replace(words.begin(), words.end(), std::string(subcommand_terminator), hidden_terminator);
        refuse_values_of_flags(words);
        const argument *option_in_wait = parse(words);
        const std::string command_words = reached_words();
        words_read read{command_words, find_command(command_words), given(), option_in_wait, end != typed.end(), {}};
        for (const std::string &word : app_.remaining(true))
            fill_place(read, word == hidden_terminator ? subcommand_terminator : word, is_option_word(word));
        if (!read.after_separator) return read;
        for (const std::string &word : std::span(end + 1, typed.end())) fill_place(read, word, false);
        return read;
    }

  private:
    struct known_option {
        const argument *what;
        const CLI::Option *found;
    };

    // One word leads to one command at each node.
    static void set_up(CLI::App *node) {
        node->allow_extras();
        node->fallthrough();
        node->require_subcommand(0, 1);
    }

    void add_command(const command &each) {
        CLI::App *node = &app_;
        for (const std::string &word : CLI::detail::split(std::string(each.words), ' ')) node = child_of(node, word);
        for (const argument &taken : each.takes)
            if (is_option(taken)) add_option(taken);
    }

    static CLI::App *child_of(CLI::App *node, const std::string &word) {
        for (CLI::App *child : node->get_subcommands([](CLI::App *) { return true; }))
            if (child->get_name() == word) return child;
        CLI::App *child = node->add_subcommand(word);
        set_up(child);
        return child;
    }

    // Commands share options of one name.
    void add_option(const argument &taken) {
        if (option_named(taken.name) != nullptr) return;
        CLI::Option *option =
            taken.kind == argument_kind::flag ? app_.add_flag(taken.name) : app_.add_option(taken.name);
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        known_.push_back({&taken, option});
    }

    const argument *option_named(std::string_view name) const {
        for (const known_option &each : known_)
            if (each.what->name == name) return each.what;
        return nullptr;
    }

    void refuse_values_of_flags(const std::vector<std::string> &words) const {
        for (const std::string &word : words) {
            const std::string name = name_in(word);
            const argument *option = option_named(name);
            if (name != word && option != nullptr && option->kind == argument_kind::flag)
                throw usage_error(fmt::format("{} takes no value: {}", name, word));
        }
    }

    // Returns the option whose word is still to come, or null.
    const argument *parse(const std::vector<std::string> &words) try {
        app_.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        return nullptr;
    } catch (const CLI::ArgumentMismatch &) {
        return option_named(name_in(words.back()));
    }

    std::string reached_words() const {
        std::string words;
        for (const CLI::App *node = &app_; !node->get_subcommands().empty();) {
            node = node->get_subcommands().front();
            words += (words.empty() ? "" : " ") + node->get_name();
        }
        return words;
    }

    arguments given() const {
        arguments all;
        for (const auto &[what, found] : known_) {
            if (found->count() == 0) continue;
            if (what->kind == argument_kind::flag)
                all.set(what->name);
            else if (found->count() > 1)
                throw usage_error(fmt::format("{} is given twice", what->name));
            else
                all.add(what->name, found->results().front());
        }
        return all;
    }

    static void fill_place(words_read &read, const std::string &word, bool is_unknown) {
        const argument *place = place_of(read.reached, read.given, word);
        if (place == nullptr || is_unknown)
            read.unknown.push_back(word);
        else
            read.given.add(place->name, word);
    }

    CLI::App app_{"", "pmctl"};
    std::vector<known_option> known_;
};

std::vector<std::string> known_options(const command *of) {
    std::vector<std::string> names;
    for (const argument *each : options_of(of)) names.emplace_back(each->name);
    return names;
}

std::vector<const argument *> places_of(const command *of) {
    std::vector<const argument *> places;
    if (of != nullptr)
        for (const argument &each : of->takes)
            if (!is_option(each)) places.push_back(&each);
    return places;
}

// The word to complain of. One in the place before it may have been meant for a sub-command.
std::string unknown_word(const words_read &read) {
    for (const argument *place : places_of(read.reached)) {
        const std::string filled = read.given.word(place->name);
        if (!filled.empty() && !nearest(filled, words_below(read.words)).empty()) return filled;
    }
    return read.unknown.front();
}

}  // namespace

words_read read_words(const std::vector<std::string> &typed) { return command_tree().read(typed); }

const argument *place_of(const command *of, const arguments &given, const std::string &next) {
    const std::vector<const argument *> places = places_of(of);
    for (size_t i = 0; i < places.size(); ++i) {
        const argument *each = places[i];
        const bool is_last = i + 1 == places.size();
        if (each->kind == argument_kind::word && given.has(each->name)) continue;
        if (each->kind == argument_kind::word || is_last) return each;
        const bool is_left = given.has(places[i + 1]->name);
        if (!is_left && goes_on_naming(given.words(each->name), next)) return each;
    }
    return nullptr;
}

std::string help_hint(const words_read &read) {
    return read.words.empty() ? "pmctl --help" : fmt::format("pmctl {} --help", read.words);
}

void refuse_unknown(const words_read &read) {
    if (read.unknown.empty()) return;
    const std::string word = unknown_word(read);
    const bool is_option = is_option_word(word);
    const auto known = is_option ? known_options(read.reached) : words_below(read.words);
    if (known.empty()) throw usage_error(fmt::format("{} does not take: {}", read.words, shown_word(word)));
    const std::string name = is_option ? name_in(word) : word;
    throw usage_error(fmt::format("not a known word here: {}{}", shown_word(name),
                                  did_you_mean(name, known, fmt::format("; see {}", help_hint(read)))));
}

std::vector<const argument *> options_of(const command *of) {
    std::vector<const argument *> options;
    if (of != nullptr)
        for (const argument &each : of->takes)
            if (is_option(each)) options.push_back(&each);
    for (const argument &each : global_options()) options.push_back(&each);
    return options;
}

}  // namespace pmctl
