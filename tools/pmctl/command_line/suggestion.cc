// SPDX-License-Identifier: Apache-2.0
#include "command_line/suggestion.h"

#include <algorithm>
#include <cctype>

#include <fmt/core.h>

namespace pmctl {
namespace {

constexpr size_t most_suggestions = 3;

std::string lower(std::string_view text) {
    std::string letters(text);
    for (char &letter : letters) letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return letters;
}

// One slip in a word of two to four characters, one more for every three further ones; dashes before it do not count.
size_t tolerated_distance(std::string_view word) {
    const size_t dashes = std::min(word.find_first_not_of('-'), word.size());
    return (word.size() - dashes + 1) / 3;
}

bool abbreviates(std::string_view word, std::string_view candidate) {
    return word.size() > 1 && lower(candidate).starts_with(lower(word));
}

// 0 for an abbreviation, however long the whole word is. Words of very different lengths are not even compared.
size_t distance_to(std::string_view word, const std::string &candidate) {
    if (abbreviates(word, candidate)) return 0;
    const size_t longer = std::max(word.size(), candidate.size());
    const size_t difference = longer - std::min(word.size(), candidate.size());
    return difference > tolerated_distance(word) ? difference : edit_distance(word, candidate);
}

}  // namespace

size_t edit_distance(std::string_view from, std::string_view to) {
    const std::string a = lower(from);
    const std::string b = lower(to);
    // Row i holds the distances of the first i characters of a to the beginnings of b.
    std::vector<std::vector<size_t>> rows(a.size() + 1, std::vector<size_t>(b.size() + 1));
    for (size_t i = 0; i <= a.size(); ++i) rows[i][0] = i;
    for (size_t j = 0; j <= b.size(); ++j) rows[0][j] = j;
    for (size_t i = 1; i <= a.size(); ++i)
        for (size_t j = 1; j <= b.size(); ++j) {
            const size_t replaced = rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
        }
    return rows[a.size()][b.size()];
}

std::vector<std::string> nearest(std::string_view word, const std::vector<std::string> &candidates) {
    size_t best = tolerated_distance(word);
    for (const std::string &candidate : candidates) best = std::min(best, distance_to(word, candidate));
    std::vector<std::string> near;
    for (const std::string &candidate : candidates)
        if (candidate != word && distance_to(word, candidate) <= best && near.size() < most_suggestions)
            near.push_back(candidate);
    return near;
}

std::string alternatives(const std::vector<std::string> &words) {
    std::string text;
    for (size_t i = 0; i < words.size(); ++i) {
        if (i > 0) text += i + 1 == words.size() ? " or " : ", ";
        text += words[i];
    }
    return text;
}

std::string did_you_mean(std::string_view word, const std::vector<std::string> &candidates,
                         const std::string &otherwise) {
    const std::vector<std::string> near = nearest(word, candidates);
    return near.empty() ? otherwise : fmt::format("; did you mean {}?", alternatives(near));
}

}  // namespace pmctl
