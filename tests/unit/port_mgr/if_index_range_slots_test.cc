// SPDX-License-Identifier: Apache-2.0
// The number of module slots, which the range functions share and ask for once in the life of a process.
#include "range_fixture.h"

namespace {

using support::call_log::take;
using testing::Contains;
using testing::Not;
using unit::asks_platform;
using unit::count;
using unit::counted;
using unit::found;
using unit::member;
using unit::no_such_range;
using unit::not_counted;
using unit::numbered;
using unit::port;

class range_slots : public unit::range_test {
  protected:
    // Whether the slot is below the number of slots, by both functions and for every type that has slots.
    static void expect_valid(uint32_t slot) {
        for (const uint32_t type : {1U, 2U, 11U, 13U}) {
            EXPECT_EQ(count(port(type, slot, 5), port(type, slot, 6)), counted(2)) << type << ", slot " << slot;
        }
        for (const uint32_t type : {1U, 2U, 13U}) {
            EXPECT_EQ(member(port(type, slot, 5), port(type, slot, 6), 1), found(port(type == 1 ? 1 : 2, slot, 6)))
                << type << ", slot " << slot;
        }
    }

    static void expect_invalid(uint32_t slot) {
        for (const uint32_t type : {1U, 2U, 11U, 13U}) {
            EXPECT_EQ(count(port(type, slot, 5), port(type, slot, 6)), not_counted) << type << ", slot " << slot;
        }
        for (const uint32_t type : {1U, 2U, 13U}) {
            EXPECT_EQ(member(port(type, slot, 5), port(type, slot, 6), 1), no_such_range) << type << ", slot " << slot;
        }
    }

    static long questions() { return std::ranges::count(take(), asks_platform); }

    // One use of each function, for a slot.
    static void count_once() { count(port(1, 1, 5), port(1, 1, 6)); }
    static void step_once() { member(port(2, 1, 5), port(2, 1, 6), 1); }
};

TEST_F(range_slots, are_valid_below_their_number) {
    for (const uint32_t slots : {0U, 1U, 5U, 9U, 10U, 18U, 128U, 255U}) {
        in_fresh_process([&] {
            platform.slots = static_cast<uint8_t>(slots);
            for (uint32_t slot = 0; slot < 256; ++slot) {
                if (slot < slots) {
                    expect_valid(slot);
                } else {
                    expect_invalid(slot);
                }
            }
            EXPECT_EQ(questions(), 1) << slots << " slots";
        });
    }
}

TEST_F(range_slots, are_asked_for_once_by_both_functions) {
    in_fresh_process([&] {
        count_once();
        EXPECT_EQ(questions(), 1);
        count_once();
        step_once();
        EXPECT_EQ(questions(), 0);
    });
    in_fresh_process([&] {
        step_once();
        EXPECT_EQ(questions(), 1);
        step_once();
        count_once();
        EXPECT_EQ(questions(), 0);
    });
}

TEST_F(range_slots, stay_what_they_were_when_they_were_first_told) {
    in_fresh_process([&] {
        platform.slots = 4;
        expect_valid(3);
        platform.slots = 20;
        expect_invalid(4);
        platform.result = -1;
        expect_valid(3);
        expect_invalid(4);
        expect_invalid(8);
        EXPECT_EQ(questions(), 1);
    });
}

TEST_F(range_slots, are_9_while_they_cannot_be_told) {
    for (const int32_t failure : {-1, -2, INT32_MIN}) {
        for (const uint8_t in_record : {uint8_t{0}, uint8_t{2}, uint8_t{255}}) {
            in_fresh_process([&] {
                platform.result = failure;
                platform.slots = in_record;
                expect_valid(0);
                expect_valid(8);
                expect_invalid(9);
                expect_invalid(10);
                expect_invalid(255);
            });
        }
    }
}

TEST_F(range_slots, are_asked_for_again_until_they_can_be_told) {
    in_fresh_process([&] {
        platform.result = -1;
        for (int i = 0; i < 3; ++i) {
            count_once();
            EXPECT_EQ(questions(), 1);
            step_once();
            EXPECT_EQ(questions(), 1);
        }
        platform.result = 0;
        platform.slots = 3;
        expect_valid(2);
        expect_invalid(3);
        EXPECT_EQ(questions(), 1);
    });
}

TEST_F(range_slots, are_told_by_a_positive_result) {
    in_fresh_process([&] {
        platform.result = 1;
        platform.slots = 12;
        expect_valid(11);
        expect_invalid(12);
        EXPECT_EQ(questions(), 1);
    });
}

TEST_F(range_slots, are_asked_for_before_the_range_is_judged) {
    for (const auto &[first, last] : {std::pair{port(1, 1, 5), port(1, 2, 5)}, {port(1, 1, 6), port(1, 1, 5)}}) {
        in_fresh_process([&] {
            EXPECT_EQ(count(first, last), not_counted);
            EXPECT_EQ(questions(), 1);
        });
        in_fresh_process([&] {
            EXPECT_EQ(member(first, last, 0), no_such_range);
            EXPECT_EQ(questions(), 1);
        });
    }
}

TEST_F(range_slots, are_not_asked_for_where_there_are_none) {
    in_fresh_process([&] {
        for (uint32_t type = 0; type < 256; ++type) {
            if (type == 1 || type == 2 || type == 11 || type == 13) continue;
            count(numbered(type, 5), numbered(type, 6));
            member(numbered(type, 5), numbered(type, 6), 1);
        }
        member(port(11, 1, 5), port(11, 1, 6), 1);
        member(port(1, 1, 5), port(1, 1, 5), 0);
        EXPECT_THAT(take(), Not(Contains(asks_platform)));
        count_once();
        EXPECT_EQ(questions(), 1);
    });
}

}  // namespace
