// SPDX-License-Identifier: Apache-2.0
#ifndef PMCTL_OUTPUT_FITTED_WIDTHS_H
#define PMCTL_OUTPUT_FITTED_WIDTHS_H

#include <cstddef>
#include <vector>

namespace pmctl {

// One each column.
using column_widths = std::vector<size_t>;

// Blanks between two columns.
inline constexpr size_t column_gap = 2;

// Widths with which the columns fit into `limit` (0: unlimited). The widest ones give way first, but not the first one,
// and none below what still says something, so that the columns may remain too wide.
column_widths fitted_widths(column_widths widths, unsigned limit);

}  // namespace pmctl

#endif
