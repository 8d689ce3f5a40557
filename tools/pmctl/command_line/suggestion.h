// SPDX-License-Identifier: Apache-2.0
// What someone may have meant who typed a word that nobody knows.
#ifndef PMCTL_COMMAND_LINE_SUGGESTION_H
#define PMCTL_COMMAND_LINE_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

namespace pmctl {

// How many characters must be inserted, removed, replaced or swapped with their neighbour to make one word of the
// other; letters of either case are the same.
size_t edit_distance(std::string_view from, std::string_view to);

// The candidates that are nearest to the word, if they are near; those that it abbreviates are. Never the word itself.
std::vector<std::string> nearest(std::string_view word, const std::vector<std::string> &candidates);

// "a", "a or b", "a, b or c".
std::string alternatives(const std::vector<std::string> &words);

// "; did you mean show?", or `otherwise` when no candidate is near.
std::string did_you_mean(std::string_view word, const std::vector<std::string> &candidates,
                         const std::string &otherwise);

}  // namespace pmctl

#endif
