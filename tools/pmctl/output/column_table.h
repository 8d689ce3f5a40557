// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_COLUMN_TABLE_H
#define PMCTL_OUTPUT_COLUMN_TABLE_H

#include "output/record_member.h"

namespace pmctl {

// A table with a header line and a line for each record; each column is as wide as its content. Nothing
// when there is no record.
std::string column_table(std::span<const record_member> columns, const record_list &records);

}  // namespace pmctl

#endif
