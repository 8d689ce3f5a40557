// SPDX-License-Identifier: Apache-2.0
// Texts that the library writes into its caller's buffer.
#include <algorithm>
#include <array>
#include <cstring>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"
#include "value_sweep.h"

namespace {

using testing::IsEmpty;
using unit::taking_a_word;
using unit::text_for;
using unit::values_to_try;
using unit::writing_function;

class written_port_strings : public support::library_test {
  protected:
    void TearDown() override {
        EXPECT_THAT(support::call_log::take(), IsEmpty());
        EXPECT_EQ(std::string(local_temp_string_buffer), "shared");
        library_test::TearDown();
    }

    // The text of a value, after a look at what else has changed.
    template <typename Function>
    std::string write(Function function, uint32_t value) {
        room.fill('#');
        EXPECT_EQ(static_cast<const void *>(taking_a_word(function)(value, buffer)), buffer);
        const auto end = std::find(room.begin() + before, room.end(), '\0');
        EXPECT_NE(end, room.end());
        EXPECT_EQ(std::count(room.begin(), room.begin() + before, '#'), before) << "in front of the buffer";
        if (end != room.end()) {
            EXPECT_EQ(std::count(end + 1, room.end(), '#'), room.end() - end - 1) << "behind the text";
        }
        return {room.begin() + before, end};
    }

    template <typename Value>
    void expect_texts(const writing_function<Value> &strings) {
        for (const uint32_t word : values_to_try<Value>(strings.texts)) {
            const auto value = static_cast<Value>(word);
            const char *const known = text_for(static_cast<uint32_t>(value), strings.texts);
            const std::string expected = known != nullptr ? known : strings.otherwise(value);
            EXPECT_EQ(write(strings.function, word), expected) << strings.name << " of " << word;
            if (HasFailure()) return;
        }
    }

    static constexpr ptrdiff_t before = 16;
    std::array<char, 128> room{};
    char *const buffer = room.data() + before;
    const char *const shared = std::strcpy(local_temp_string_buffer, "shared");
};

TEST_F(written_port_strings, of_speeds_divide_as_an_unsigned_number) {
    expect_texts(unit::speed);
    EXPECT_EQ(write(port_speed_string, 16000), "16 Gbps");
    EXPECT_EQ(write(port_speed_string, 999), "0 Gbps");
    EXPECT_EQ(write(port_speed_string, 1999), "1 Gbps");
    EXPECT_EQ(write(port_speed_string, 0x80000000), "2147483 Gbps");
    EXPECT_EQ(write(port_speed_string, 0xfffffffe), "4294967 Gbps");
}

TEST_F(written_port_strings, of_speeds_in_gbps_divide_as_a_signed_number_towards_zero) {
    expect_texts(unit::speed_in_gbps);
    EXPECT_EQ(write(port_speed_string_gbps, 16000), "16");
    EXPECT_EQ(write(port_speed_string_gbps, 110), "0");
    EXPECT_EQ(write(port_speed_string_gbps, 0x80000000), "-2147483");
    EXPECT_EQ(write(port_speed_string_gbps, static_cast<uint32_t>(-999)), "0");
    EXPECT_EQ(write(port_speed_string_gbps, static_cast<uint32_t>(-1999)), "-1");
}

TEST_F(written_port_strings, of_words_are_known_or_a_number) {
    for (const auto &strings : unit::written_words) expect_texts(strings);
}

TEST_F(written_port_strings, of_buffer_sizes_are_all_65536_numbers) {
    expect_texts(unit::buffer_size);
    EXPECT_EQ(write(port_rxbufsize_string, 0), "0");
    EXPECT_EQ(write(port_rxbufsize_string, 65535), "65535");
    EXPECT_EQ(write(port_rxbufsize_string, 0x10000 + 2112), "2112");
}

TEST_F(written_port_strings, of_credits_look_at_bit_30_before_the_sign) {
    EXPECT_EQ(write(port_bb_credit_string, 0), "default");
    EXPECT_EQ(write(port_bb_credit_string, 16), "16");
    EXPECT_EQ(write(port_bb_credit_string, 0x3fffffff), "1073741823");
    EXPECT_EQ(write(port_bb_credit_string, 0x40000000), "0 (mode E)");
    EXPECT_EQ(write(port_bb_credit_string, 0x40000005), "5 (mode E)");
    EXPECT_EQ(write(port_bb_credit_string, 0x80000000), "0 (mode Fx)");
    EXPECT_EQ(write(port_bb_credit_string, 0x80000010), "16 (mode Fx)");
    EXPECT_EQ(write(port_bb_credit_string, 0xc0000001), "-2147483647 (mode E)");
    EXPECT_EQ(write(port_bb_credit_string, 0xc0000000), "-2147483648 (mode E)");
    EXPECT_EQ(write(port_bb_credit_string, 0xffffffff), "-1073741825 (mode E)");
}

}  // namespace
