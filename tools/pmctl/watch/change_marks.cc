// SPDX-License-Identifier: Apache-2.0
#include "watch/change_marks.h"

#include <map>
#include <tuple>

namespace pmctl {
namespace {

// Title, heading, first cell, and how many rows of the same came before.
using row_name = std::tuple<std::string, std::string, std::string, size_t>;

// Names the rows of a view in their order.
class row_namer {
  public:
    row_name name_of(const sheet &in, const row &cells) {
        if (&in != sheet_) {
            sheet_ = &in;
            heading_.clear();
        }
        if (is_heading(in, cells)) heading_ = cells[0].text;
        row_name name{in.title, heading_, cells.empty() ? "" : cells[0].text, 0};
        std::get<size_t>(name) = seen_[name]++;
        return name;
    }

  private:
    const sheet *sheet_ = nullptr;
    std::string heading_;
    std::map<row_name, size_t> seen_;
};

std::map<row_name, const row *> rows_by_name(const view &of) {
    std::map<row_name, const row *> rows;
    row_namer namer;
    for (const sheet &in : of.sheets)
        for (const row &cells : in.rows) rows.emplace(namer.name_of(in, cells), &cells);
    return rows;
}

void mark_row(row &now, const row *before) {
    for (size_t column = 0; column < now.size(); ++column)
        now[column].changed =
            before == nullptr || column >= before->size() || now[column].text != (*before)[column].text;
}

}  // namespace

void mark_changes(view &now, const view &before) {
    const std::map<row_name, const row *> known = rows_by_name(before);
    row_namer namer;
    for (sheet &in : now.sheets)
        for (row &cells : in.rows) {
            const auto found = known.find(namer.name_of(in, cells));
            mark_row(cells, found == known.end() ? nullptr : found->second);
        }
}

}  // namespace pmctl
