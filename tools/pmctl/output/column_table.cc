// SPDX-License-Identifier: Apache-2.0
#include "output/column_table.h"

#include <algorithm>

namespace pmctl {
namespace {

constexpr size_t gap = 2;

using row = std::vector<std::string>;

std::vector<row> rows_of(std::span<const record_member> columns, const record_list &records) {
    std::vector<row> rows(1 + records.size());
    for (const record_member &column : columns) {
        rows[0].emplace_back(column.label);
        for (size_t i = 0; i < records.size(); ++i) rows[1 + i].push_back(display_text(column, records[i]));
    }
    return rows;
}

size_t width_of(const std::vector<row> &rows, size_t column) {
    size_t width = 0;
    for (const row &each : rows) width = std::max(width, each[column].size());
    return width;
}

std::string line_of(const row &cells, const std::vector<size_t> &widths) {
    std::string line;
    for (size_t column = 0; column < cells.size(); ++column) {
        line += cells[column];
        if (column + 1 < cells.size()) line.append(widths[column] - cells[column].size() + gap, ' ');
    }
    return line + "\n";
}

}  // namespace

std::string column_table(std::span<const record_member> columns, const record_list &records) {
    if (records.empty()) return {};
    const std::vector<row> rows = rows_of(columns, records);
    std::vector<size_t> widths;
    for (size_t column = 0; column < columns.size(); ++column) widths.push_back(width_of(rows, column));
    std::string table;
    for (const row &each : rows) table += line_of(each, widths);
    return table;
}

}  // namespace pmctl
