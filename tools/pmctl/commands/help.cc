// SPDX-License-Identifier: Apache-2.0
#include "commands/help.h"

#include "command_line/help_text.h"
#include "command_line/word_reader.h"
#include "failure.h"

namespace pmctl {

command_result run_help(const arguments &given) {
    const words_read read = read_words(given.words("COMMAND"));
    refuse_unknown(read);
    if (!read.given.all().empty()) throw usage_error("help takes the words of a command only");
    return {{{}, help_text(read.reached)}, {}};
}

}  // namespace pmctl
