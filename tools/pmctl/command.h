// SPDX-License-Identifier: Apache-2.0
// What a command is: its words, its arguments and the function that carries it out.
#ifndef PMCTL_COMMAND_H
#define PMCTL_COMMAND_H

#include <cstdint>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/view.h"

namespace pmctl {

enum class argument_kind : uint8_t {
    flag,    // "--json"
    option,  // "--color WHEN": a flag and one word after it
    word,    // one word in its place
    words    // any number of words in their place
};

// What the words of an argument must be; completion offers them where it can.
enum class argument_content : uint8_t {
    text,
    choice,      // one of `choices`
    interfaces,  // names and ranges of interfaces, with commas between
    setting,     // the words of a setting
    module,      // the number of a module
    type,        // a type of interfaces
    file,        // the name of a file
    seconds,     // a number of seconds to wait
    command      // the words of a command
};

struct argument {
    const char *name;  // "--json", "NAME"
    argument_kind kind;
    const char *help;
    argument_content content = argument_content::text;
    std::span<const char *const> choices = {};
    const char *value = "";  // what help calls the word of an option: "WHEN"
    bool is_required = false;
};

constexpr bool is_option(const argument &taken) {
    return taken.kind == argument_kind::flag || taken.kind == argument_kind::option;
}

// The arguments as they were given.
class arguments {
  public:
    [[nodiscard]] bool has(std::string_view name) const { return values_.contains(name); }

    // The words given for `name`, in their order.
    [[nodiscard]] std::vector<std::string> words(std::string_view name) const {
        const auto found = values_.find(name);
        return found == values_.end() ? std::vector<std::string>{} : found->second;
    }

    // The only word given for `name`, or nothing.
    [[nodiscard]] std::string word(std::string_view name) const {
        const auto found = values_.find(name);
        return found == values_.end() || found->second.empty() ? std::string{} : found->second.front();
    }

    void set(std::string_view name) { values_[std::string(name)]; }
    void add(std::string_view name, std::string word) { values_[std::string(name)].push_back(std::move(word)); }

    [[nodiscard]] const std::map<std::string, std::vector<std::string>, std::less<>> &all() const { return values_; }

  private:
    std::map<std::string, std::vector<std::string>, std::less<>> values_;
};

// What a command has to show, and what it could not do: one line each.
struct command_result {
    view output;
    std::vector<std::string> failures;
};

using command_function = std::function<command_result(const arguments &)>;

// A command, or the head of a family of commands, which has no function of its own.
struct command {
    std::string_view words;  // "show interface brief"
    const char *summary;     // a hidden command has none
    std::span<const argument> takes;
    const char *examples;                      // one a line, indented
    command_result (*run)(const arguments &);  // null for the head of a family
    command_function (*watched)() = nullptr;   // instead of `run`, for one that remembers between drawings
};

}  // namespace pmctl

#endif
