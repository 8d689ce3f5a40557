// SPDX-License-Identifier: Apache-2.0
#include "interface_names.h"

#include <fmt/core.h>

#include <optional>

#include "failure.h"
#include "platform_dev/if_index_dev.h"

namespace pmctl {
namespace {

constexpr std::string_view digits = "0123456789";
constexpr size_t name_room = 256;  // what sprintf_if_index may use

std::optional<if_index_t> index_of(const std::string &name) {
    if_index_t index;
    if (if_index_from_name(name.c_str(), &index) != 0) return std::nullopt;
    return index;
}

// The name of the other end of a range: `first` with its last number replaced.
std::string with_last_number(const std::string &first, const std::string &number) {
    return first.substr(0, first.find_last_not_of(digits) + 1) + number;
}

// Names may hold a '-' of their own, so a range is what is no name as a whole.
std::optional<interface_range> range_of(const std::string &text) {
    if (const auto index = index_of(text)) return interface_range{text, *index, *index};
    const size_t dash = text.rfind('-');
    if (dash == std::string::npos) return std::nullopt;
    const std::string first_name = text.substr(0, dash);
    const std::string number = text.substr(dash + 1);
    if (number.empty() || number.find_first_not_of(digits) != std::string::npos) return std::nullopt;
    const auto first = index_of(first_name);
    const auto last = index_of(with_last_number(first_name, number));
    if (!first || !last) return std::nullopt;
    return interface_range{text, *first, *last};
}

interface_range parse_range(const std::string &text) {
    const auto range = range_of(text);
    if (!range) throw usage_error(fmt::format("not an interface name: {}", text));
    if (range->first > range->last) throw usage_error(fmt::format("the range runs backwards: {}", text));
    return *range;
}

}  // namespace

std::vector<interface_range> parse_interface_ranges(const std::string &text) {
    std::vector<interface_range> ranges;
    size_t begin = 0;
    for (size_t comma; (comma = text.find(',', begin)) != std::string::npos; begin = comma + 1)
        ranges.push_back(parse_range(text.substr(begin, comma - begin)));
    ranges.push_back(parse_range(text.substr(begin)));
    return ranges;
}

std::string interface_name(if_index_t index) {
    char text[name_room];
    sprintf_if_index(text, index);
    return text;
}

}  // namespace pmctl
