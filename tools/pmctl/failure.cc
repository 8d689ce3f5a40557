// SPDX-License-Identifier: Apache-2.0
#include "failure.h"

#include <fmt/core.h>

#include "output/printable_text.h"

namespace pmctl {

std::string shown_word(const std::string &word) {
    return word.empty() || word.find(' ') != std::string::npos ? quoted_text(word) : word;
}

usage_errors::usage_errors(std::vector<std::string> lines)
    : usage_error(fmt::format("{} mistakes", lines.size())), lines_(std::move(lines)) {}

unknown_name::unknown_name(std::string name)
    : usage_error(fmt::format("not an interface name: {}", shown_word(name))), name_(std::move(name)) {}

}  // namespace pmctl
