// SPDX-License-Identifier: Apache-2.0
// The members of the port records: how people and programs see them.
#ifndef PMCTL_OUTPUT_PORT_MEMBERS_H
#define PMCTL_OUTPUT_PORT_MEMBERS_H

#include "output/record_member.h"

namespace pmctl {

// Every member of pm_port_info_t but the reserved ones.
std::span<const member_group> port_groups();

// The members of pm_port_info_brief_t that make a line of the table, and all of them but the reserved ones.
std::span<const record_member> brief_columns();

// The same columns of full records.
std::span<const record_member> port_columns();

std::span<const member_group> brief_groups();

}  // namespace pmctl

#endif
