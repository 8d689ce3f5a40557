// SPDX-License-Identifier: Apache-2.0
// value_text.h: tables from values to texts, in the order in which they are compared.
#ifndef PM_API_COMMON_VALUE_TEXT_H
#define PM_API_COMMON_VALUE_TEXT_H

#include <cstddef>

namespace pm {

template <typename Value>
struct value_text {
    Value value;
    const char *text;
};

// The text of the first row with this value, else `otherwise`.
template <typename Value, size_t Rows>
const char *text_of(const value_text<Value> (&table)[Rows], Value value, const char *otherwise) {
    for (const value_text<Value> &row : table) {
        if (row.value == value) return row.text;
    }
    return otherwise;
}

}  // namespace pm

#endif
