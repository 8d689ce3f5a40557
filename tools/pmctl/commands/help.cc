// SPDX-License-Identifier: Apache-2.0
#include "commands/help.h"

#include "help_text.h"
#include "word_reader.h"

namespace pmctl {

command_result run_help(const arguments &given) {
    word_reader reader;
    for (const std::string &word : given.words("COMMAND")) reader.take(word);
    return {{{}, help_text(reader.reached())}, {}};
}

}  // namespace pmctl
