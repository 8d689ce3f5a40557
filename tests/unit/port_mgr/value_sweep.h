// SPDX-License-Identifier: Apache-2.0
// value_sweep.h: values to call a function of one number with, and calls with more than the number's own bits.
#ifndef UNIT_PORT_MGR_VALUE_SWEEP_H
#define UNIT_PORT_MGR_VALUE_SWEEP_H

#include <algorithm>
#include <set>
#include <type_traits>

#include "port_string_expectations.h"

namespace unit {

// The function, taking its first argument as a whole word: one that has a narrow argument looks at its own bits only.
template <typename Result, typename Value, typename... More>
auto taking_a_word(Result (*function)(Value, More...)) {
    return reinterpret_cast<Result (*)(uint32_t, More...)>(reinterpret_cast<void (*)()>(function));
}

// Around a value that is known: neighbours, the other sign, and values that differ in one bit.
inline void add_relatives(uint32_t value, std::set<uint32_t> *values) {
    values->insert({value, value - 1, value + 1, 0U - value, ~value});
    for (int bit = 0; bit < 32; ++bit) values->insert(value ^ 1U << bit);
}

// Every value of a narrow number, with and without other bits above it; of a word, the ones that tell a list of known
// values from every other: their relatives, the small numbers, all values of one or two bits, and round thousands.
template <typename Value>
std::set<uint32_t> values_to_try(const value_texts &known) {
    std::set<uint32_t> values;
    if constexpr (sizeof(Value) < 4) {
        constexpr uint32_t count = 1U << 8 * sizeof(Value);
        for (uint32_t value = 0; value < count; ++value) values.insert({value, value | ~(count - 1)});
        return values;
    }
    for (const value_text &row : known) add_relatives(row.value, &values);
    for (const uint32_t limit : {0U, 0x7fffffffU, 0x80000000U}) add_relatives(limit, &values);
    for (uint32_t value = 0; value < 512; ++value) values.insert({value, 0U - value});
    for (int bit = 0; bit < 32; ++bit)
        for (int other = 0; other < 32; ++other) values.insert(1U << bit | 1U << other);
    for (uint32_t value = 1000; value <= 128000; value += 1000)
        values.insert({value - 1, value, value + 1, 0U - value - 1, 0U - value, 0U - value + 1});
    return values;
}

// The text for a value, null when it is not among the known ones.
inline const char *text_for(uint32_t value, const value_texts &known) {
    const auto row = std::ranges::find(known, value, &value_text::value);
    return row == known.end() ? nullptr : row->text;
}

}  // namespace unit

#endif
