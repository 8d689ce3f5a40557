// SPDX-License-Identifier: Apache-2.0
#include "output/render.h"

#include <algorithm>

#include "output/cell_text.h"
#include "output/fitted_widths.h"
#include "output/text_width.h"

namespace pmctl {
namespace {

constexpr size_t indent = 2;

row header_row(const sheet &table) {
    row header;
    for (const std::string &title : table.header) header.push_back({title});
    return header;
}

// What a column keeps free for the mark of this cell. Others than the last have the gap for it, so that marks shift
// nothing.
size_t room_for_mark(const cell &marked, size_t column, const column_widths &widths, const terminal &on) {
    return column + 1 == widths.size() ? mark_width(marked, on) : 0;
}

void widen(column_widths &widths, const row &cells, const terminal &on) {
    widths.resize(std::max(widths.size(), cells.size()));
    for (size_t column = 0; column < cells.size(); ++column)
        widths[column] =
            std::max(widths[column], text_width(cells[column].text) + room_for_mark(cells[column], column, widths, on));
}

// Nothing is filled up after the last text; blanks at its own end are content.
void append_line(std::string &text, const row &cells, const column_widths &widths, size_t indented,
                 const terminal &on) {
    size_t blanks = indented;
    for (size_t column = 0; column < cells.size(); ++column) {
        const size_t room = widths[column] - room_for_mark(cells[column], column, widths, on);
        const cell_text shown = cell_text_of(cells[column], room, on);
        if (shown.width > 0) {
            text.append(blanks, ' ').append(shown.text);
            blanks = 0;
        }
        blanks += widths[column] + column_gap - shown.width;
    }
    text += '\n';
}

void append_table(std::string &text, const sheet &table, const terminal &on) {
    const row header = header_row(table);
    column_widths widths;
    widen(widths, header, on);
    for (const row &each : table.rows) widen(widths, each, on);
    widths = fitted_widths(widths, on.width);
    append_line(text, header, widths, 0, on);
    for (const row &each : table.rows) append_line(text, each, widths, 0, on);
}

column_widths list_widths(const view &shown, const terminal &on) {
    column_widths widths;
    for (const sheet &each : shown.sheets)
        for (const row &line : each.rows)
            if (each.header.empty() && !is_heading(each, line)) widen(widths, line, on);
    return widths;
}

void append_list(std::string &text, const sheet &list, const column_widths &widths, const terminal &on) {
    const size_t outside = list.title.empty() ? 0 : indent;
    size_t indented = outside;
    for (const row &each : list.rows) {
        if (is_heading(list, each)) {
            text.append(outside, ' ').append(each[0].text) += '\n';
            indented = outside + indent;
        } else {
            append_line(text, each, widths, indented, on);
        }
    }
}

}  // namespace

std::string render(const view &shown, const terminal &on) {
    const column_widths of_lists = list_widths(shown, on);
    std::string text;
    for (const sheet &each : shown.sheets) {
        if (each.rows.empty()) continue;
        if (!text.empty()) text += "\n";
        if (!each.title.empty()) text += each.title + "\n";
        if (each.header.empty())
            append_list(text, each, of_lists, on);
        else
            append_table(text, each, on);
    }
    text += shown.text;
    return text;
}

}  // namespace pmctl
