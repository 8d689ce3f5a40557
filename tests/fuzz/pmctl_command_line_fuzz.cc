// SPDX-License-Identifier: Apache-2.0
// The words of a command line, one a line of the input, as they are read, checked and completed.
#include <sstream>
#include <string>
#include <vector>

#include "command_line/argument_check.h"
#include "command_line/command_line.h"
#include "command_line/completion.h"
#include "failure.h"
#include "outcome.h"
#include "support/fuzz.h"

namespace {

std::vector<std::string> words_in(fuzz::bytes input) {
    std::istringstream lines(std::string(input.begin(), input.end()));
    std::vector<std::string> words;
    for (std::string line; std::getline(lines, line);) words.push_back(line.c_str());
    return words;
}

void read(const std::vector<std::string> &words) {
    std::vector<const char *> argv{"pmctl"};
    for (const std::string &word : words) argv.push_back(word.c_str());
    try {
        const pmctl::invocation call = pmctl::parse_command_line(static_cast<int>(argv.size()), argv.data());
        FUZZ_REQUIRE(call.what != nullptr || !call.text.empty());
        if (call.what != nullptr) pmctl::check_words(*call.what, call.given);
    } catch (const pmctl::usage_error &error) {
        FUZZ_REQUIRE(*error.what() != '\0');
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const std::vector<std::string> words = words_in({data, size});
    read(words);
    pmctl::completions(words, [] { return std::vector<std::string>{"fc1/1", "Ethernet2/1"}; });
    return 0;
}
