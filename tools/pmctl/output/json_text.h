// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_JSON_TEXT_H
#define PMCTL_OUTPUT_JSON_TEXT_H

#include <cstddef>
#include <utility>
#include <variant>

#include "output/record_member.h"

namespace pmctl {

// An object whose one key, `array`, holds an array with an object for each record, whatever their number. Numbers are
// numbers, with their words under "KEY_text" where they have words; what a port does not have is null; an interface
// index "..if_index" is a number and has the name beside it under "..name"; bytes that are not UTF-8 are replaced by
// U+FFFD.
std::string json_text(std::string_view array, std::span<const member_group> groups, const record_list &records);

// An object as a list of keys and values, in the order in which they are written.
using json_value =
    std::variant<std::nullptr_t, bool, uint32_t, uint64_t, double, std::string, std::vector<std::string>>;
using json_fields = std::vector<std::pair<std::string, json_value>>;

// The same document with these objects in its array.
std::string json_text(std::string_view array, const std::vector<json_fields> &objects);

}  // namespace pmctl

#endif
