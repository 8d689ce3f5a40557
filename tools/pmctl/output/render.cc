// SPDX-License-Identifier: Apache-2.0
#include "output/render.h"

#include <algorithm>

namespace pmctl {
namespace {

constexpr size_t gap = 2;
constexpr size_t indent = 2;

// One each column.
using column_widths = std::vector<size_t>;

row header_row(const sheet &table) {
    row header;
    for (const std::string &title : table.header) header.push_back({title});
    return header;
}

void widen(column_widths &widths, const row &cells) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (size_t column = 0; column < cells.size(); ++column)
        widths[column] = std::max(widths[column], cells[column].text.size());
}

// Without blanks at the end.
std::string line_of(const row &cells, const column_widths &widths, size_t indented) {
    std::string line;
    size_t blanks = indented;
    for (size_t column = 0; column < cells.size(); ++column) {
        const std::string &text = cells[column].text;
        if (!text.empty()) {
            line.append(blanks, ' ').append(text);
            blanks = 0;
        }
        blanks += widths[column] - text.size() + gap;
    }
    return line + "\n";
}

std::string table_lines(const sheet &table) {
    const row header = header_row(table);
    column_widths widths;
    widen(widths, header);
    for (const row &each : table.rows) widen(widths, each);
    std::string lines = line_of(header, widths, 0);
    for (const row &each : table.rows) lines += line_of(each, widths, 0);
    return lines;
}

bool is_heading(const row &cells) { return cells.size() == 1; }

column_widths list_widths(const view &shown) {
    column_widths widths;
    for (const sheet &each : shown.sheets)
        for (const row &line : each.rows)
            if (each.header.empty() && !is_heading(line)) widen(widths, line);
    return widths;
}

std::string list_lines(const sheet &list, const column_widths &widths) {
    std::string lines;
    const size_t outside = list.title.empty() ? 0 : indent;
    size_t indented = outside;
    for (const row &each : list.rows) {
        lines += is_heading(each) ? std::string(outside, ' ') + each[0].text + "\n" : line_of(each, widths, indented);
        if (is_heading(each)) indented = outside + indent;
    }
    return lines;
}

}  // namespace

std::string render(const view &shown, const terminal &) {
    const column_widths of_lists = list_widths(shown);
    std::string text;
    for (const sheet &each : shown.sheets) {
        if (each.rows.empty()) continue;
        if (!text.empty()) text += "\n";
        if (!each.title.empty()) text += each.title + "\n";
        text += each.header.empty() ? list_lines(each, of_lists) : table_lines(each);
    }
    return text + shown.text;
}

}  // namespace pmctl
