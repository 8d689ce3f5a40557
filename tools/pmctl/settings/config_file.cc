// SPDX-License-Identifier: Apache-2.0
#include "settings/config_file.h"

#include <algorithm>

#include <fmt/core.h>

#include "command_line/interface_words.h"
#include "failure.h"
#include "output/printable_text.h"
#include "settings/line_words.h"
#include "settings/setting_reader.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

using words_span = std::span<const std::string>;

// A file with more of them is of another kind, and what may have been meant takes long to find.
constexpr size_t most_mistakes = 100;

struct created_kind_words {
    std::string_view keyword;
    created_kind kind;
    bool (*fits)(if_index_t index);
    const char *name;
};

constexpr created_kind_words created_kinds[] = {
    {"subinterface", created_kind::sub_interface, is_sub_interface, "a sub-interface"},
    {"loopback", created_kind::loopback, is_loopback, "a loopback"},
};

const std::vector<std::string> &other_beginnings() {
    static const std::vector<std::string> words = {"interface", "subinterface create", "subinterface delete",
                                                   "loopback create", "loopback delete"};
    return words;
}

// A line may end as on other systems, too.
std::string_view without_carriage_return(std::string_view line) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool says_nothing(std::string_view line) {
    const size_t begin = line.find_first_not_of(" \t");
    return begin == std::string_view::npos || line[begin] == '!' || line[begin] == '#';
}

void check_bytes(std::string line) {
    std::replace(line.begin(), line.end(), '\t', ' ');
    const size_t at = printable_length(line);
    if (at == line.size()) return;
    const auto byte = static_cast<uint8_t>(line[at]);
    throw usage_error(fmt::format("byte {:#04x} in column {} is no character of a command line", byte, at + 1));
}

std::vector<interface_range> read_interfaces(const std::string &keywords, words_span words) {
    if (words.empty()) throw usage_error(fmt::format("{} needs names of interfaces", keywords));
    return interfaces_named({words.begin(), words.end()});
}

creation_step read_creation(const created_kind_words &of, words_span words) {
    const std::string keyword(of.keyword);
    const std::string action = words.size() > 1 ? words[1] : "";
    if (action != "create" && action != "delete")
        throw usage_error(
            fmt::format("not known behind {}: {}; it takes create or delete", keyword, shown_word(action)));
    auto interfaces = read_interfaces(keyword + " " + action, words.subspan(2));
    check_kind(of.kind, interfaces);
    return {of.kind, action == "create", std::move(interfaces)};
}

// Reads line after line; a line `interface` says what the settings after it are about.
class config_reader {
  public:
    void read(size_t number, std::string_view line) {
        if (says_nothing(line)) return;
        check_bytes(std::string(line));
        const std::vector<std::string> words = line_words(line);
        if (words.front() == "interface") {
            name_interfaces({});  // so that one slip makes one mistake
            name_interfaces(read_interfaces("interface", words_span(words).subspan(1)));
        } else {
            steps_.push_back({number, step_of(words)});
        }
    }

    std::vector<config_step> steps() { return std::move(steps_); }

  private:
    void name_interfaces(std::vector<interface_range> interfaces) {
        interfaces_ = std::make_shared<const std::vector<interface_range>>(std::move(interfaces));
    }

    std::variant<setting_step, creation_step> step_of(const std::vector<std::string> &words) const {
        for (const created_kind_words &each : created_kinds)
            if (words.front() == each.keyword) return read_creation(each, words);
        setting_change change = read_setting(words, other_beginnings());
        if (interfaces_ == nullptr) throw usage_error("no line names the interface before this one");
        return setting_step{interfaces_, std::move(change)};
    }

    std::shared_ptr<const std::vector<interface_range>> interfaces_;  // null before the first line `interface`
    std::vector<config_step> steps_;
};

}  // namespace

std::vector<config_step> read_config(const std::string &name, std::string_view text) {
    config_reader reader;
    std::vector<std::string> mistakes;
    for (size_t number = 1; !text.empty() && mistakes.size() < most_mistakes; ++number) {
        const size_t length = std::min(text.find('\n'), text.size());
        try {
            reader.read(number, without_carriage_return(text.substr(0, length)));
        } catch (const usage_error &mistake) {
            mistakes.push_back(fmt::format("{}: {}", line_name(name, number), mistake.what()));
        }
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    if (!text.empty()) mistakes.push_back(fmt::format("{}: too many mistakes to read on", name));
    if (!mistakes.empty()) throw usage_errors(std::move(mistakes));
    return reader.steps();
}

std::string line_name(const std::string &file, size_t line) { return fmt::format("{}:{}", file, line); }

void check_kind(created_kind kind, const std::vector<interface_range> &interfaces) {
    const auto *const of = std::find_if(std::begin(created_kinds), std::end(created_kinds),
                                        [kind](const created_kind_words &each) { return each.kind == kind; });
    for (const interface_range &each : interfaces)
        if (!of->fits(each.first())) throw usage_error(fmt::format("not {}: {}", of->name, each.text()));
}

}  // namespace pmctl
