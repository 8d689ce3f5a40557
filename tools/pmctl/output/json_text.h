// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_JSON_TEXT_H
#define PMCTL_OUTPUT_JSON_TEXT_H

#include "output/record_member.h"

namespace pmctl {

// An object whose one key, `array`, holds an array with an object for each record, whatever their number. Numbers are
// numbers; what a port does not have is null; an interface index "..if_index" is a number and has the name beside it
// under "..name"; bytes that are not UTF-8 are replaced by U+FFFD.
std::string json_text(std::string_view array, std::span<const member_group> groups, const record_list &records);

}  // namespace pmctl

#endif
