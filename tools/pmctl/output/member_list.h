// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_MEMBER_LIST_H
#define PMCTL_OUTPUT_MEMBER_LIST_H

#include "output/record_member.h"

namespace pmctl {

// A list for each record: its title is the interface's name; the members stand under the titles of their groups. The
// first member of the first group is the interface index.
std::vector<sheet> member_sheets(std::span<const member_group> groups, const record_list &records);

}  // namespace pmctl

#endif
