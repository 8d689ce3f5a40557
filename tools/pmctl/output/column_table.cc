// SPDX-License-Identifier: Apache-2.0
#include "output/column_table.h"

namespace pmctl {

sheet column_sheet(std::span<const record_member> columns, const record_list &records) {
    sheet table;
    for (const record_member &column : columns) table.header.emplace_back(column.label);
    table.rows.reserve(records.size());
    for (const auto &record : records) {
        row &cells = table.rows.emplace_back();
        cells.reserve(columns.size());
        for (const record_member &column : columns) cells.push_back(display_cell(column, record));
    }
    return table;
}

}  // namespace pmctl
