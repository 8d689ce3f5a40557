// SPDX-License-Identifier: Apache-2.0
// What a command is: its words, its arguments and the function that carries it out.
#ifndef PMCTL_COMMAND_H
#define PMCTL_COMMAND_H

#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "output/view.h"

namespace pmctl {

enum class argument_kind { flag, words };

// One argument: a flag ("--json"), or any number of words in their place ("NAME").
struct argument {
    const char *name;
    argument_kind kind;
    const char *help;
};

// The arguments as they were given.
class arguments {
  public:
    [[nodiscard]] bool has(std::string_view name) const { return values_.contains(name); }

    // The words given for `name`, in their order.
    [[nodiscard]] std::vector<std::string> words(std::string_view name) const {
        const auto found = values_.find(name);
        return found == values_.end() ? std::vector<std::string>{} : found->second;
    }

    void set(std::string_view name, std::vector<std::string> words) {
        values_.insert_or_assign(std::string(name), std::move(words));
    }

    [[nodiscard]] const std::map<std::string, std::vector<std::string>, std::less<>> &all() const { return values_; }

  private:
    std::map<std::string, std::vector<std::string>, std::less<>> values_;
};

// What a command has to show, and what it could not do: one line each.
struct command_result {
    view output;
    std::vector<std::string> failures;
};

// A command, or the head of a family of commands, which has no function of its own.
struct command {
    std::string_view words;  // "show interface brief"
    const char *summary;
    std::span<const argument> takes;
    const char *examples;                      // one a line, indented
    command_result (*run)(const arguments &);  // null for the head of a family
};

}  // namespace pmctl

#endif
