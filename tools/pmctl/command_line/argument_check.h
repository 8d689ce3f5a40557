// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_COMMAND_LINE_ARGUMENT_CHECK_H
#define PMCTL_COMMAND_LINE_ARGUMENT_CHECK_H

#include "command.h"

namespace pmctl {

// Throws usage_error when an option was given that the command does not take.
void check_options(const command &of, const arguments &given);

// Throws usage_error when an argument that the command needs was not given; about those that were, when one is wrong.
void check_presence(const command &of, const arguments &given);

// Throws usage_error, with a suggestion where one is near, for the first word that is not what its argument takes.
void check_words(const command &of, const arguments &given);

// What was typed for argument_content::seconds, in seconds. Throws usage_error.
double parse_seconds(const std::string &text);

// What was typed for argument_content::module, where one of the words `beside` may have been meant. Throws usage_error.
uint8_t parse_module(const std::string &text, const std::vector<std::string> &beside = {});

// What was typed for argument_content::type: a word or a number. Throws usage_error.
uint8_t parse_type(const std::string &text);

}  // namespace pmctl

#endif
