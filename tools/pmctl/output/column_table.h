// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_COLUMN_TABLE_H
#define PMCTL_OUTPUT_COLUMN_TABLE_H

#include "output/record_member.h"

namespace pmctl {

// A table with a column for each member and a row for each record.
sheet column_sheet(std::span<const record_member> columns, const record_list &records);

}  // namespace pmctl

#endif
