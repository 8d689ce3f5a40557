// SPDX-License-Identifier: Apache-2.0
#include "naive_attribute.h"

#include <algorithm>
#include <set>

namespace model {
namespace {

using numbers = std::set<uint8_t>;

const numbers single_bytes{1, 4, 5, 11, 12, 13, 17, 22, 34, 35, 42, 44, 48, 59, 71, 72, 84, 85};
const numbers shorts{7, 15, 52, 56, 57, 58};
const numbers words{2,  3,  8,  14, 21, 23, 25, 27, 28, 29, 31, 32, 36, 37,
                    41, 45, 49, 50, 51, 53, 54, 61, 62, 67, 68, 78, 80, 81};
const numbers raw_words{18, 19, 20, 47, 55};
const numbers only_written{18, 19, 20, 30, 47, 49, 51, 53, 55, 56, 57, 58, 59, 61, 62, 67, 68, 71, 72, 84, 85};

}  // namespace

size_t written_width(uint8_t type) {
    if (single_bytes.contains(type)) return 1;
    if (shorts.contains(type)) return 2;
    if (words.contains(type) || raw_words.contains(type)) return 4;
    if (type == 9 || type == 30) return 8;
    return type == 6 || type == 83 ? 81 : 0;
}

size_t read_width(uint8_t type) { return only_written.contains(type) ? 0 : written_width(type); }

support::bytes travelling(uint8_t type, const support::bytes &value) {
    support::bytes other(value.begin(), value.begin() + static_cast<ptrdiff_t>(written_width(type)));
    if (shorts.contains(type) || words.contains(type)) std::ranges::reverse(other);
    return other;
}

}  // namespace model
