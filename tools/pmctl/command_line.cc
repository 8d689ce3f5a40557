// SPDX-License-Identifier: Apache-2.0
#include "command_line.h"

#include <fmt/core.h>

#include "argument_check.h"
#include "failure.h"
#include "help_text.h"
#include "word_reader.h"

namespace pmctl {

invocation parse_command_line(int argc, const char *const *argv) {
    word_reader reader;
    std::string typed = "pmctl";
    for (int i = 1; i < argc; ++i) {
        reader.take(argv[i]);
        typed.append(" ").append(argv[i]);
    }
    const arguments &given = reader.given();
    const command *named = reader.reached();
    if (given.has("--help")) return {nullptr, given, help_text(named), typed};
    if (given.has("--version")) return {nullptr, given, fmt::format("pmctl {}\n", PMCTL_VERSION), typed};
    if (const argument *option = reader.option_in_wait())
        throw usage_error(fmt::format("{} needs {}", option->name, option->value));
    if (named == nullptr || named->run == nullptr)
        throw usage_error(fmt::format("the command is not complete: see {}", reader.help_hint()));
    check_places(*named, given);
    return {named, given, {}, typed};
}

}  // namespace pmctl
