// SPDX-License-Identifier: Apache-2.0
// Reads the words of a command line one by one, and knows at each point what may come next; the command line and its
// completion are read by the same rules.
#ifndef PMCTL_WORD_READER_H
#define PMCTL_WORD_READER_H

#include "command.h"

namespace pmctl {

// Words lead from command to sub-command until they fill arguments. Options may stand anywhere; the word after an
// option that takes one belongs to it, and so does what follows "--option=". After "--" every word fills an argument.
class word_reader {
  public:
    // Throws usage_error.
    void take(const std::string &word);

    // The words of the command so far; empty at the beginning.
    [[nodiscard]] const std::string &words() const { return words_; }

    // The command of these words, or null at the beginning.
    [[nodiscard]] const command *reached() const;

    // The option whose word comes next, or null.
    [[nodiscard]] const argument *option_in_wait() const { return option_in_wait_; }

    // The argument that the next word in place fills, or null when there is none.
    [[nodiscard]] const argument *next_in_place() const;

    // Whether the next word may still be an option or a sub-command.
    [[nodiscard]] bool takes_options() const { return !after_separator_; }

    [[nodiscard]] const arguments &given() const { return given_; }

    // How help for what was reached is asked for: "pmctl show --help".
    [[nodiscard]] std::string help_hint() const;

  private:
    void take_option(const std::string &word);
    void add_value(const argument &option, const std::string &value);
    bool descend(const std::string &word);
    void fill_place(const std::string &word);
    [[noreturn]] void refuse_option(const std::string &name) const;
    [[noreturn]] void refuse_word(const std::string &word) const;

    std::string words_;
    arguments given_;
    const argument *option_in_wait_ = nullptr;
    bool after_separator_ = false;
};

// The option of this name, of `of` (which may be null), of every command or of any other; null when there is none.
const argument *find_option(const command *of, std::string_view name);

// What `of` takes itself (when it is not null) and what stands anywhere, options only.
std::vector<const argument *> options_of(const command *of);

}  // namespace pmctl

#endif
