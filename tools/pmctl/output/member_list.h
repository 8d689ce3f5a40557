// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_MEMBER_LIST_H
#define PMCTL_OUTPUT_MEMBER_LIST_H

#include "output/record_member.h"

namespace pmctl {

// For each record its interface's name, then its members, one a line under the titles of their groups. The first member
// of the first group is the interface index.
std::string member_lists(std::span<const member_group> groups, const record_list &records);

}  // namespace pmctl

#endif
