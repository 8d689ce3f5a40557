// SPDX-License-Identifier: Apache-2.0
// outcome.h: all that a function that parses an answer does, as the model says and as the library did it.
#ifndef MODEL_OUTCOME_H
#define MODEL_OUTCOME_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "record_members.h"

namespace model {

inline constexpr uint32_t untouched_count = 0xa5a5a5a5;

enum class array { untouched, null, block };

template <typename Record>
struct outcome {
    uint32_t status = 0;
    uint32_t count = untouched_count;
    array state = array::untouched;
    std::vector<Record> records = {};
    std::string printed = {};
    std::vector<std::string> reporters = {};  // functions whose checks of arguments failed
};

// The outcome of an answer that is refused.
template <typename Record>
outcome<Record> refused(uint32_t status) {
    return {.status = status};
}

template <typename Record>
void expect_same(const outcome<Record> &expected, const outcome<Record> &seen) {
    EXPECT_EQ(seen.status, expected.status);
    EXPECT_EQ(seen.count, expected.count);
    EXPECT_EQ(seen.state, expected.state);
    EXPECT_EQ(seen.printed, expected.printed);
    EXPECT_EQ(seen.reporters, expected.reporters);
    ASSERT_EQ(seen.records.size(), expected.records.size());
    for (size_t i = 0; i < expected.records.size(); ++i) {
        EXPECT_EQ(first_difference(expected.records[i], seen.records[i]), "") << "in record " << i;
    }
}

}  // namespace model

#endif
