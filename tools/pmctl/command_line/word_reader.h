// SPDX-License-Identifier: Apache-2.0
// Reads the words of a command line as far as they go; the command line and its completion are read by the same rules.
#ifndef PMCTL_COMMAND_LINE_WORD_READER_H
#define PMCTL_COMMAND_LINE_WORD_READER_H

#include "command.h"

namespace pmctl {

// What the words of a command line come to.
struct words_read {
    std::string words;       // of the command; empty at the beginning
    const command *reached;  // the command of these words, or null at the beginning
    arguments given;
    const argument *option_in_wait;    // the option whose word is still to come, or null
    bool after_separator;              // no option and no sub-command may follow
    std::vector<std::string> unknown;  // words that mean nothing where they stand
};

// Words lead from command to sub-command until they fill arguments. Options may stand anywhere; the word after an
// option that takes one belongs to it, and so does what follows "--option=". After "--" every word fills an argument.
// Throws usage_error.
words_read read_words(const std::vector<std::string> &typed);

// The argument that the next word in place fills after those given, or null when there is none; null for null. Of two
// places of which the first takes names of interfaces, the second begins at the first word that is none.
const argument *place_of(const command *of, const arguments &given, const std::string &next);

// How help for what was reached is asked for: "pmctl show --help".
std::string help_hint(const words_read &read);

// Throws usage_error, with a suggestion where one is near, when a word is unknown.
void refuse_unknown(const words_read &read);

// What `of` takes itself (when it is not null) and what stands anywhere, options only.
std::vector<const argument *> options_of(const command *of);

}  // namespace pmctl

#endif
