// SPDX-License-Identifier: Apache-2.0
// value_texts.h: the values that have texts.
#ifndef DISSECTOR_VALUE_TEXTS_H
#define DISSECTOR_VALUE_TEXTS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dissector {

struct value_row {
    uint32_t value;
    std::string text;
};

struct value_table {
    std::string_view name;
    std::vector<value_row> rows;  // one for each value
};

std::vector<value_table> value_tables();

}  // namespace dissector

#endif
