// SPDX-License-Identifier: Apache-2.0
#include "switch/interface_names.h"

#include <fmt/core.h>

#include <optional>

#include "failure.h"
#include "platform_dev/if_index_dev.h"

namespace pmctl {
namespace {

constexpr std::string_view digits = "0123456789";
constexpr size_t longest_range = 512;  // two names of the longest that the platform writes

std::optional<if_index_t> index_of(const std::string &name) {
    if_index_t index;
    if (if_index_from_name(name.c_str(), &index) != 0) return std::nullopt;
    return index;
}

// The other end of a range: a name, or the number in which it differs from the first one's.
std::optional<if_index_t> other_end(const std::string &first_name, const std::string &text) {
    if (text.empty() || text.find_first_not_of(digits) != std::string::npos) return index_of(text);
    return index_of(name_stem(first_name) + text);
}

// Names may hold a '-' of their own: a text that is a name as a whole is no range, and any '-' may part the ends.
interface_range parse_range(const std::string &text) {
    if (text.size() > longest_range) throw unknown_name(text);
    if (const auto index = index_of(text)) return {text, *index, *index};
    for (size_t dash = text.find('-'); dash != std::string::npos; dash = text.find('-', dash + 1)) {
        const std::string first_name = text.substr(0, dash);
        const auto first = index_of(first_name);
        const auto last = other_end(first_name, text.substr(dash + 1));
        if (first && last) return {text, *first, *last};
    }
    throw unknown_name(text);
}

// Without those that may stand beside a comma.
std::string without_blanks(const std::string &text) {
    const size_t begin = std::min(text.find_first_not_of(' '), text.size());
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

}  // namespace

std::vector<interface_range> parse_interface_ranges(const std::string &text) {
    std::vector<interface_range> ranges;
    for (size_t begin = 0; begin <= text.size();) {
        const size_t comma = std::min(text.find(',', begin), text.size());
        ranges.push_back(parse_range(without_blanks(text.substr(begin, comma - begin))));
        begin = comma + 1;
    }
    return ranges;
}

uint8_t interface_type(if_index_t index) {
    uint8_t type = IF_TYPE_NONE;
    if_index_get_type(index, &type);
    return type;
}

bool is_sub_interface(if_index_t index) { return if_index_get_mainintf_from_subintf(index) != index; }

bool is_loopback(if_index_t index) { return interface_type(index) == IF_TYPE_LOOPBACK; }

std::string name_stem(const std::string &name) { return name.substr(0, name.find_last_not_of(digits) + 1); }

}  // namespace pmctl
