// SPDX-License-Identifier: Apache-2.0
#include "output/fitted_widths.h"

#include <algorithm>
#include <numeric>

namespace pmctl {
namespace {

constexpr size_t least_width = 4;  // three characters and the sign that some were cut

size_t total_of(const column_widths &widths) {
    return std::accumulate(widths.begin(), widths.end(), column_gap * (widths.size() - 1));
}

}  // namespace

column_widths fitted_widths(column_widths widths, unsigned limit) {
    if (limit == 0 || widths.size() < 2) return widths;
    for (size_t total = total_of(widths); total > limit; --total) {
        const auto widest = std::max_element(widths.begin() + 1, widths.end());
        if (*widest <= least_width) break;
        --*widest;
    }
    return widths;
}

}  // namespace pmctl
