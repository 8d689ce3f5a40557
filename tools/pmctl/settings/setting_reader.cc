// SPDX-License-Identifier: Apache-2.0
#include "settings/setting_reader.h"

#include <algorithm>

#include <fmt/format.h>

#include <iterator>
#include <sstream>

#include "command_line/suggestion.h"
#include "failure.h"

namespace pmctl {
namespace {

using words_span = std::span<const std::string>;

constexpr const char *negation = "no";
constexpr size_t most_characters = static_cast<size_t>(value_width::text) - 1;
constexpr size_t most_keywords = 3;

std::vector<std::string> split(const std::string &line) {
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string joined(words_span words) { return fmt::format("{}", fmt::join(words, " ")); }

bool begin_with(words_span words, const std::vector<std::string> &beginning) {
    return words.size() >= beginning.size() && std::equal(beginning.begin(), beginning.end(), words.begin());
}

std::string negated_line(const setting &of) { return fmt::format("{} {}", negation, of.keywords); }

bool takes_value(const setting &of) {
    return is_text(of) || !of.values.worded.empty() || of.values.least <= of.values.most;
}

// What may stand where a setting begins.
std::vector<std::string> known_beginnings() {
    std::vector<std::string> beginnings;
    for (const setting &each : all_settings()) {
        beginnings.emplace_back(each.keywords);
        if (each.negated) beginnings.push_back(negated_line(each));
    }
    return beginnings;
}

// As many words are taken for the beginning as make a known one most nearly.
usage_error unknown_setting(words_span words, const std::vector<std::string> &beside) {
    std::vector<std::string> known = known_beginnings();
    known.insert(known.end(), beside.begin(), beside.end());
    for (size_t count = std::min(words.size(), most_keywords); count > 0; --count) {
        const std::string typed = joined(words.first(count));
        const std::string meant = did_you_mean(typed, known, "");
        if (!meant.empty()) return usage_error(fmt::format("not a known setting: {}{}", typed, meant));
    }
    return usage_error(
        fmt::format("not a known setting: {}; see pmctl config interface --help", shown_word(words.front())));
}

setting_change read_text(const setting &of, const std::string &text) {
    if (text.size() > most_characters)
        throw usage_error(fmt::format("the {} is longer than {} bytes", of.keywords, most_characters));
    if (text.find('\0') != std::string::npos) throw usage_error(fmt::format("the {} holds a NUL byte", of.keywords));
    return {&of, 0, text};
}

setting_change read_number(const setting &of, const std::string &text) {
    if (const auto value = read_value(of.values, text)) return {&of, *value};
    if (const auto words = words_of_code(of.values, text))
        throw usage_error(fmt::format("not a value of {}: {}; that is the code of {}", of.keywords, text, *words));
    const std::string taken = fmt::format("; it takes {}", values_taken(of.values));
    throw usage_error(fmt::format("not a value of {}: {}{}", of.keywords, shown_word(text),
                                  did_you_mean(text, value_words(of.values), taken)));
}

setting_change read_behind(const setting &of, words_span words) {
    if (words.empty() && of.bare) return {&of, *of.bare};
    if (words.empty() && is_text(of)) throw usage_error(fmt::format("{} needs a text", of.keywords));
    if (words.empty()) throw usage_error(fmt::format("{} needs a value: {}", of.keywords, values_taken(of.values)));
    if (!takes_value(of)) throw usage_error(fmt::format("{} takes no value: {}", of.keywords, joined(words)));
    return is_text(of) ? read_text(of, joined(words)) : read_number(of, joined(words));
}

setting_change read_negated(const setting &of, words_span words) {
    if (!words.empty()) throw usage_error(fmt::format("{} takes no value: {}", negated_line(of), joined(words)));
    return {&of, *of.negated};
}

// Every setting with each of its values that has words.
std::vector<std::vector<std::string>> known_lines() {
    std::vector<std::vector<std::string>> lines;
    for (const std::string &each : known_beginnings()) lines.push_back(split(each));
    for (const setting &each : all_settings())
        for (const std::string &value : value_words(each.values))
            lines.push_back(split(fmt::format("{} {}", each.keywords, value)));
    return lines;
}

}  // namespace

setting_change read_setting(words_span words, const std::vector<std::string> &beside) {
    for (const setting &each : all_settings()) {
        const std::vector<std::string> keywords = split(std::string(each.keywords));
        if (begin_with(words, keywords)) return read_behind(each, words.subspan(keywords.size()));
        if (each.negated && begin_with(words, split(negated_line(each))))
            return read_negated(each, words.subspan(keywords.size() + 1));
    }
    throw unknown_setting(words, beside);
}

std::vector<std::string> words_after(words_span words) {
    std::vector<std::string> next;
    for (const auto &line : known_lines()) {
        if (line.size() <= words.size() || !std::equal(words.begin(), words.end(), line.begin())) continue;
        const std::string &word = line[words.size()];
        if (std::find(next.begin(), next.end(), word) == next.end()) next.push_back(word);
    }
    return next;
}

std::vector<setting_entry> setting_entries() {
    const std::string nothing = "takes no value";
    std::vector<setting_entry> entries;
    for (const setting &each : all_settings()) {
        const std::string text = fmt::format("a text of at most {} bytes", most_characters);
        const std::string values = is_text(each) ? text : values_taken(each.values);
        entries.push_back({std::string(each.keywords), takes_value(each) ? values : nothing});
        if (each.negated) entries.push_back({negated_line(each), nothing});
    }
    return entries;
}

}  // namespace pmctl
