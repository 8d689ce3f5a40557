// SPDX-License-Identifier: Apache-2.0
#include "command_line/command_line.h"

#include <fmt/format.h>

#include <algorithm>

#include "command_line/argument_check.h"
#include "command_line/help_text.h"
#include "command_line/word_reader.h"
#include "failure.h"

namespace pmctl {

invocation parse_command_line(int argc, const char *const *argv) {
    const std::vector<std::string> typed(argv + std::min(argc, 1), argv + argc);
    const std::string line = fmt::format("pmctl {}", fmt::join(typed, " "));
    const words_read read = read_words(typed);
    const arguments &given = read.given;
    const command *named = read.reached;
    refuse_unknown(read);
    if (given.has("--help")) return {nullptr, given, help_text(named), line};
    if (given.has("--version")) return {nullptr, given, fmt::format("pmctl {}\n", PMCTL_VERSION), line};
    if (const argument *option = read.option_in_wait)
        throw usage_error(fmt::format("{} needs {}", option->name, option->value));
    if (named == nullptr || named->run == nullptr)
        throw usage_error(fmt::format("the command is not complete: see {}", help_hint(read)));
    check_options(*named, given);
    check_presence(*named, given);
    return {named, given, {}, line};
}

}  // namespace pmctl
