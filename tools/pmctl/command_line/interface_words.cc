// SPDX-License-Identifier: Apache-2.0
#include "command_line/interface_words.h"

#include <algorithm>

#include <fmt/core.h>

#include "command_line/suggestion.h"
#include "failure.h"
#include "switch/interface_names.h"

namespace pmctl {
namespace {

constexpr std::string_view digits = "0123456789";

// Abbreviations are what typing errors are made in, too.
constexpr const char *interface_kinds[] = {"fc", "Ethernet", "eth", "port-channel", "po", "fcip", "mgmt", "loopback"};

bool are_interfaces(const std::string &text) try {
    parse_interface_ranges(text);
    return true;
} catch (const usage_error &) {
    return false;
}

// "fc1/1" for "fx1/1": what the name is with a kind that exists.
std::vector<std::string> with_other_kinds(const std::string &name) {
    const size_t end = std::min(name.find_first_of(digits), name.size());
    const std::vector<std::string> kinds(std::begin(interface_kinds), std::end(interface_kinds));
    std::vector<std::string> names;
    for (const std::string &kind : nearest(name.substr(0, end), kinds))
        if (are_interfaces(kind + name.substr(end))) names.push_back(kind + name.substr(end));
    return names;
}

std::string meant_instead(const std::string &name, const std::vector<std::string> &beside,
                          const std::string &otherwise) {
    std::vector<std::string> meant = nearest(name, beside);
    for (const std::string &other : with_other_kinds(name)) meant.push_back(other);
    return meant.empty() ? otherwise : fmt::format("; did you mean {}?", alternatives(meant));
}

// A comma at the end of a word or at the beginning of the next one joins them to one list.
std::vector<std::string> joined_lists(const std::vector<std::string> &words) {
    std::vector<std::string> lists;
    for (const std::string &word : words) {
        const bool goes_on = !lists.empty() && (lists.back().ends_with(',') || word.starts_with(','));
        if (goes_on)
            lists.back() += word;
        else
            lists.push_back(word);
    }
    return lists;
}

}  // namespace

bool goes_on_naming(const std::vector<std::string> &words, const std::string &next) {
    const bool has_comma = next.find(',') != std::string::npos;
    return words.empty() || words.back().ends_with(',') || has_comma || next.find_first_of(digits) != std::string::npos;
}

std::vector<interface_range> interfaces_named(const std::vector<std::string> &words,
                                              const std::vector<std::string> &beside,
                                              const std::string &otherwise) try {
    std::vector<interface_range> all;
    for (const std::string &list : joined_lists(words))
        for (interface_range &range : parse_interface_ranges(list)) all.push_back(std::move(range));
    return all;
} catch (const unknown_name &error) {
    throw usage_error(error.what() + meant_instead(error.name(), beside, otherwise));
}

}  // namespace pmctl
