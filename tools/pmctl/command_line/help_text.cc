// SPDX-License-Identifier: Apache-2.0
#include "command_line/help_text.h"

#include <algorithm>

#include <fmt/core.h>

#include <sstream>

#include "command_table.h"
#include "settings/setting_reader.h"

namespace pmctl {
namespace {

constexpr size_t text_width = 80;
constexpr size_t gap = 2;

// A line of help: what it explains, and how.
struct entry {
    std::string what;
    std::string meaning;
};

// The text with line ends for blanks, so that it fits beside a margin of `margin` columns.
std::string wrapped(const std::string &text, size_t margin) {
    std::string lines;
    size_t column = margin;
    std::istringstream words(text);
    for (std::string word; words >> word; column += word.size()) {
        const bool fits = column + 1 + word.size() <= text_width;
        if (column > margin) lines += fits ? " " : fmt::format("\n{:{}}", "", margin);
        column = fits ? column + (column > margin ? 1 : 0) : margin;
        lines += word;
    }
    return lines;
}

std::string section(const char *title, const std::vector<entry> &entries) {
    if (entries.empty()) return {};
    size_t width = 0;
    for (const entry &each : entries) width = std::max(width, each.what.size());
    std::string text = fmt::format("\n{}:\n", title);
    for (const entry &each : entries)
        text += fmt::format("  {:{}}{}\n", each.what, width + gap, wrapped(each.meaning, 2 * gap + width));
    return text;
}

std::string signature(const argument &taken) {
    switch (taken.kind) {
        case argument_kind::flag:
        case argument_kind::word:
            return taken.name;
        case argument_kind::option:
            return fmt::format("{} {}", taken.name, taken.value);
        default:
            return fmt::format("{}...", taken.name);
    }
}

std::string usage_line(const command *of) {
    if (of == nullptr) return "Usage: pmctl COMMAND...\n";
    if (of->run == nullptr) return fmt::format("Usage: pmctl {} COMMAND...\n", of->words);
    std::string line = fmt::format("Usage: pmctl {}", of->words);
    for (const argument &taken : of->takes)
        line += taken.is_required ? fmt::format(" {}", signature(taken)) : fmt::format(" [{}]", signature(taken));
    return line + "\n";
}

std::vector<entry> entries_of(std::span<const argument> taken, bool options) {
    std::vector<entry> entries;
    for (const argument &each : taken)
        if (is_option(each) == options) entries.push_back({signature(each), each.help});
    return entries;
}

// Every setting when the command takes one.
std::vector<entry> settings_of(const command &of) {
    std::vector<entry> entries;
    for (const argument &each : of.takes)
        if (each.content == argument_content::setting)
            for (const setting_entry &line : setting_entries()) entries.push_back({line.keywords, line.values});
    return entries;
}

bool belongs_to(const command &each, std::string_view family) {
    return family.empty() || (each.words.starts_with(family) && each.words[family.size()] == ' ');
}

// Every command of a family that can be run, at any depth.
std::vector<entry> commands_of(std::string_view family) {
    std::vector<entry> entries;
    for (const command &each : all_commands())
        if (each.run != nullptr && !is_hidden(each) && each.words != family && belongs_to(each, family))
            entries.push_back({std::string(each.words), each.summary});
    return entries;
}

std::string first_line(const std::string &text) { return text.substr(0, text.find('\n') + 1); }

// Those of a command, or the first one of each command of a family.
std::string examples_of(std::string_view words) {
    if (const command *of = find_command(words); of != nullptr && *of->examples != '\0') return of->examples;
    std::string examples;
    for (const command &each : all_commands())
        if (belongs_to(each, words)) examples += first_line(each.examples);
    return examples;
}

}  // namespace

std::string help_text(const command *of) {
    const std::string_view words = of == nullptr ? std::string_view{} : of->words;
    std::string text = usage_line(of);
    text += fmt::format("\n{}\n", of == nullptr ? "Shows and configures the ports of a switch." : of->summary);
    text += section("Commands", commands_of(words));
    if (of != nullptr) text += section("Arguments", entries_of(of->takes, false));
    if (of != nullptr) text += section("Settings", settings_of(*of));
    if (of != nullptr) text += section("Options", entries_of(of->takes, true));
    text += section("Options of every command", entries_of(global_options(), true));
    return text + fmt::format("\nExamples:\n{}", examples_of(words));
}

}  // namespace pmctl
