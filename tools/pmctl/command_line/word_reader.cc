// SPDX-License-Identifier: Apache-2.0
// The only file that knows CLI11, which takes long to compile.
#include "command_line/word_reader.h"

#include <algorithm>

#include <fmt/core.h>

#include <CLI/CLI.hpp>

#include "command_line/suggestion.h"
#include "command_table.h"
#include "failure.h"

namespace pmctl {
namespace {

constexpr const char *separator = "--";
constexpr auto take_all = CLI::MultiOptionPolicy::TakeAll;
constexpr const char *plain_flag = "true";  // what the parser stores for a flag without a value

// "--color" in "--color=auto".
std::string name_in(const std::string &word) { return word.substr(0, word.find('=')); }

// The parser, built from the command table: a node a command. Options hang on the root, so that they may stand
// anywhere; which of them a command takes is checked later, as are all words.
class command_tree {
  public:
    command_tree() {
        app_.set_help_flag();
        set_up(&app_);
        for (const argument &each : global_options()) add_option(each);
        for (const command &each : all_commands()) add_command(each);
    }

    words_read read(const std::vector<std::string> &typed) {
        const argument *option_in_wait = nullptr;
        try {
            app_.parse(std::vector<std::string>(typed.rbegin(), typed.rend()));
        } catch (const CLI::ArgumentMismatch &) {
            option_in_wait = option_named(name_in(typed.back()));
        }
        const std::string words = reached_words();
        return {words, find_command(words), given(), option_in_wait, is_separated(typed), unknown()};
    }

  private:
    struct known_argument {
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
        for (const argument &taken : each.takes) {
            if (is_option(taken))
                add_option(taken);
            else
                add_place(node, taken);
        }
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
        const std::string names = taken.name == std::string_view("--help") ? "-h,--help" : taken.name;
        CLI::Option *option = taken.kind == argument_kind::flag ? app_.add_flag(names) : app_.add_option(names);
        option->multi_option_policy(take_all);
        known_.push_back({&taken, option});
    }

    void add_place(CLI::App *node, const argument &taken) {
        CLI::Option *place = node->add_option(taken.name);
        place->expected(taken.kind == argument_kind::words ? -1 : 1)->multi_option_policy(take_all);
        known_.push_back({&taken, place});
    }

    const argument *option_named(std::string_view name) const {
        for (const known_argument &each : known_)
            if (is_option(*each.what) && each.what->name == name) return each.what;
        return nullptr;
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
                all.set(flag_of(*what, *found));
            else if (what->kind == argument_kind::option && found->count() > 1)
                throw usage_error(fmt::format("{} is given twice", what->name));
            else
                for (const std::string &word : found->results()) all.add(what->name, word);
        }
        return all;
    }

    static const char *flag_of(const argument &what, const CLI::Option &found) {
        for (const std::string &value : found.results())
            if (value != plain_flag) throw usage_error(fmt::format("{0} takes no value: {0}={1}", what.name, value));
        return what.name;
    }

    static bool is_separated(const std::vector<std::string> &typed) {
        return std::find(typed.begin(), typed.end(), separator) != typed.end();
    }

    std::vector<std::string> unknown() const {
        std::vector<std::string> words = app_.remaining(true);
        words.erase(std::remove(words.begin(), words.end(), separator), words.end());
        return words;
    }

    CLI::App app_{"", "pmctl"};
    std::vector<known_argument> known_;
};

std::vector<std::string> known_options(const command *of) {
    std::vector<std::string> names;
    for (const argument *each : options_of(of)) names.emplace_back(each->name);
    return names;
}

std::vector<std::string> known_words(std::string_view head) {
    std::vector<std::string> words;
    for (const command *each : commands_below(head))
        if (!is_hidden(*each)) words.emplace_back(last_word(*each));
    return words;
}

}  // namespace

words_read read_words(const std::vector<std::string> &typed) { return command_tree().read(typed); }

const argument *next_in_place(const words_read &read) {
    if (read.reached == nullptr) return nullptr;
    for (const argument &each : read.reached->takes)
        if (each.kind == argument_kind::words || (each.kind == argument_kind::word && !read.given.has(each.name)))
            return &each;
    return nullptr;
}

std::string help_hint(const words_read &read) {
    return read.words.empty() ? "pmctl --help" : fmt::format("pmctl {} --help", read.words);
}

void refuse_unknown(const words_read &read) {
    if (read.unknown.empty()) return;
    const std::string &word = read.unknown.front();
    const bool is_option_word = word.starts_with('-') && word.size() > 1;
    const auto known = is_option_word ? known_options(read.reached) : known_words(read.words);
    if (known.empty()) throw usage_error(fmt::format("{} does not take: {}", read.words, word));
    const std::string name = is_option_word ? name_in(word) : word;
    throw usage_error(fmt::format("not a known word here: {}{}", name,
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
