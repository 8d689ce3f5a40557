// SPDX-License-Identifier: Apache-2.0
#include "failure.h"

#include <fmt/core.h>

#include "output/printable_text.h"

namespace pmctl {

std::string shown_word(const std::string &word) {
    return word.empty() || word.find(' ') != std::string::npos ? quoted_text(word) : word;
}

unknown_name::unknown_name(std::string name)
    : usage_error(fmt::format("not an interface name: {}", shown_word(name))), name_(std::move(name)) {}

}  // namespace pmctl
