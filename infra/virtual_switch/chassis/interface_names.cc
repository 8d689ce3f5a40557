// SPDX-License-Identifier: Apache-2.0
#include "chassis/interface_names.h"

#include <charconv>
#include <optional>

#include "chassis/chassis_error.h"
#include "chassis/value_reader.h"
#include "platform_dev/if_index_dev.h"

namespace virtual_switch {
namespace {

constexpr size_t longest_list = 4096;  // bytes of one text

std::optional<uint32_t> to_number(std::string_view digits) {
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return number;
}

// A name cut before the number at its end: "fc1/" and 12.
struct numbered_name {
    std::string stem;
    uint32_t number;
};

std::optional<numbered_name> cut_number(std::string_view name) {
    const size_t digits = name.find_last_not_of("0123456789") + 1;
    const std::optional<uint32_t> number = to_number(name.substr(digits));
    if (!number) return std::nullopt;
    return numbered_name{std::string(name.substr(0, digits)), *number};
}

// Appends the interfaces of "<name>-<number>". Returns false when the text is not of that form.
bool append_range(std::string_view text, std::vector<if_index_t> &interfaces) {
    const size_t dash = text.rfind('-');
    if (dash == std::string_view::npos) return false;
    const std::optional<numbered_name> first = cut_number(text.substr(0, dash));
    const std::optional<uint32_t> last = to_number(text.substr(dash + 1));
    if (!first || !last || *last < first->number || *last - first->number >= longest_range) return false;
    for (uint32_t number = first->number; number <= *last; ++number) {
        if_index_t if_index = 0;
        if (if_index_from_name((first->stem + std::to_string(number)).c_str(), &if_index) != 0) return false;
        interfaces.push_back(if_index);
    }
    return true;
}

std::string_view without_blanks(std::string_view text) {
    const size_t begin = text.find_first_not_of(' ');
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

void append_interfaces(const document_value &value, const std::string &key, std::string_view item,
                       std::vector<if_index_t> &interfaces) {
    if_index_t if_index = 0;
    if (if_index_from_name(std::string(item).c_str(), &if_index) == 0) {
        interfaces.push_back(if_index);
    } else if (!append_range(item, interfaces)) {
        throw chassis_error(value.line, key, "'" + std::string(item) + "' is no interface and no range of interfaces");
    }
}

}  // namespace

std::vector<if_index_t> read_interfaces(const document_value &value, const std::string &key) {
    std::string_view rest = read_text(value, key, longest_list);
    std::vector<if_index_t> interfaces;
    for (;;) {
        const size_t comma = rest.find(',');
        append_interfaces(value, key, without_blanks(rest.substr(0, comma)), interfaces);
        if (comma == std::string_view::npos) return interfaces;
        rest.remove_prefix(comma + 1);
    }
}

}  // namespace virtual_switch
