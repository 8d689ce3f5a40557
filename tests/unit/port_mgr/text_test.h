// SPDX-License-Identifier: Apache-2.0
// text_test.h: the fixture of functions that return a text. They ask nothing of their surroundings, and touch the
// shared buffer for an unknown value only.
#ifndef UNIT_PORT_MGR_TEXT_TEST_H
#define UNIT_PORT_MGR_TEXT_TEST_H

#include <cstring>
#include <string>

#include "library_test.h"
#include "value_sweep.h"

namespace unit {

inline constexpr size_t shared_size = 200;
static_assert(sizeof local_temp_string_buffer == shared_size);

// The whole shared buffer, and the one that has a text with zeros behind it.
inline std::string shared_buffer() { return {local_temp_string_buffer, shared_size}; }
inline std::string shared_buffer_with(std::string text) {
    text.resize(shared_size);
    return text;
}

class text_test : public support::library_test {
  protected:
    text_test() { fill_shared_buffer(); }

    void TearDown() override {
        EXPECT_THAT(support::call_log::take(), testing::IsEmpty());
        library_test::TearDown();
    }

    static void fill_shared_buffer() { std::memset(local_temp_string_buffer, '#', shared_size); }

    static void expect_shared_buffer_untouched(const std::string &name) {
        EXPECT_EQ(shared_buffer(), std::string(shared_size, '#')) << name;
    }

    static void expect_constant(const char *text, const char *expected, const std::string &name) {
        EXPECT_STREQ(text, expected) << name;
        const bool in_shared_buffer = text >= local_temp_string_buffer && text < local_temp_string_buffer + shared_size;
        EXPECT_FALSE(in_shared_buffer) << name;
        expect_shared_buffer_untouched(name);
    }

    static void expect_shared(const char *text, int32_t value, const std::string &name) {
        EXPECT_EQ(static_cast<const void *>(text), local_temp_string_buffer) << name;
        EXPECT_EQ(shared_buffer(), shared_buffer_with("Unknown(" + std::to_string(value) + ")")) << name;
        fill_shared_buffer();
    }

    // Tries the function with every value, or enough of them.
    template <typename Value>
    static void expect_texts(const text_function<Value> &strings) {
        const auto function = taking_a_word(strings.function);
        for (const uint32_t word : values_to_try<Value>(strings.texts)) {
            const auto value = static_cast<Value>(word);
            const std::string name = strings.name + ("(" + std::to_string(static_cast<int32_t>(word)) + ")");
            const char *expected = text_for(static_cast<uint32_t>(value), strings.texts);
            if (expected == nullptr) expected = strings.otherwise;
            const char *const text = function(word);
            if (expected == nullptr) {
                expect_shared(text, static_cast<int32_t>(value), name);
            } else {
                expect_constant(text, expected, name);
                EXPECT_EQ(static_cast<const void *>(text), function(word)) << name << " again";
            }
            if (HasFailure()) return;
        }
    }
};

}  // namespace unit

#endif
