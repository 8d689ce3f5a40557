// SPDX-License-Identifier: Apache-2.0
// The interface at an offset of a range.
#include "range_fixture.h"

namespace {

using support::call_log::take;
using testing::IsEmpty;
using unit::asks_platform;
using unit::behind_the_last_port;
using unit::found;
using unit::member;
using unit::no_such_range;
using unit::numbered;
using unit::port;
using unit::range_result;
using unit::untouched_output;

constexpr uint32_t walked_types[] = {1, 2, 4, 10, 13, 22};
constexpr uint32_t slot_types[] = {1, 2, 13};
constexpr uint32_t numbered_types[] = {4, 22, 10};

class range_member : public unit::range_test {
  protected:
    // The type of the indexes that are built for a type.
    static uint32_t built(uint32_t type) {
        if (type == 13) return 2;
        return type == 22 ? 4 : type;
    }

    static const char *number_getter(uint32_t type) {
        return type == 10 ? "if_index_fcip_get_tunnel" : "if_index_port_channel_get_channel_num";
    }

    std::map<if_index_t, uint16_t> &special_numbers(uint32_t type) {
        return type == 10 ? numbers.special_tunnels : numbers.special_channels;
    }

    std::set<if_index_t> &without_number(uint32_t type) {
        return type == 10 ? numbers.without_tunnel : numbers.without_channel;
    }

    static std::string build_call(uint32_t type, uint32_t number) {
        return fmt::format("{}({})", type == 10 ? "if_index_fcip_port_init" : "if_index_port_channel_init", number);
    }
};

// ---- the first of one

TEST_F(range_member, at_offset_0_of_one_index_is_that_index_unchecked) {
    for (uint32_t type = 0; type < 256; ++type) {
        const if_index_t only = port(type, 255, 5, 9);
        interfaces.without_type = {only};
        EXPECT_EQ(member(only, only, 0), found(only)) << "type " << type;
        EXPECT_THAT(take(), IsEmpty()) << "type " << type;
    }
}

// ---- types

TEST_F(range_member, is_of_six_types) {
    in_fresh_process([&] {
        for (uint32_t type = 0; type < 256; ++type) {
            range_result expected = no_such_range;
            if (type == 1) expected = found(port(1, 1, 6));
            if (type == 2 || type == 13) expected = found(port(2, 1, 6));
            if (type == 4 || type == 22) expected = found(numbered(4, 0x501));
            if (type == 10) expected = found(numbered(10, 0x501));
            EXPECT_EQ(member(port(type, 1, 5), port(type, 1, 7), 1), expected) << "type " << type;
        }
    });
}

TEST_F(range_member, asks_for_no_more_than_the_types_of_a_type_it_refuses) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (std::ranges::find(walked_types, type) != std::end(walked_types)) continue;
        for (const uint32_t offset : {0U, 1U}) {
            EXPECT_EQ(member(port(type, 1, 5), port(type, 1, 7), offset), no_such_range) << "type " << type;
            expect_types_asked_alone(port(type, 1, 5), port(type, 1, 7));
        }
        EXPECT_EQ(member(port(type, 1, 5), port(type, 1, 5), 1), no_such_range) << "type " << type;
        take();
    }
}

TEST_F(range_member, is_of_one_type_only) {
    for (const uint32_t first : walked_types) {
        for (const uint32_t last : walked_types) {
            if (first == last) continue;
            EXPECT_EQ(member(port(first, 1, 5), port(last, 1, 5), 0), no_such_range) << first << " to " << last;
            expect_types_asked_alone(port(first, 1, 5), port(last, 1, 5));
        }
    }
}

TEST_F(range_member, fails_with_the_status_of_a_type_that_cannot_be_told) {
    for (const uint32_t type : {1U, 2U, 3U, 4U, 5U, 10U, 11U, 13U, 22U}) {
        for (const uint32_t last_type : {type, 4U, 3U}) {
            const if_index_t first = port(type, 1, 5);
            const if_index_t last = port(last_type, 1, 7);
            for (const uint32_t status : {0xffffffffU, 1U, PM_ERR_INVALID_PARAM}) {
                interfaces.without_type_result = static_cast<int32_t>(status);
                for (const std::set<if_index_t> &failing : {std::set{first}, std::set{last}, std::set{first, last}}) {
                    interfaces.without_type = failing;
                    EXPECT_EQ(member(first, last, 0), (range_result{status, untouched_output})) << type;
                    EXPECT_THAT(take(), testing::Each(testing::StartsWith("if_index_get_type")));
                }
            }
        }
    }
}

// ---- ports

TEST_F(range_member, of_ports_is_the_port_that_far_from_the_first) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            const if_index_t first = port(type, 1, 4);
            const if_index_t last = port(type, 1, 6);
            EXPECT_EQ(member(first, last, 0), found(port(built(type), 1, 4))) << "type " << type;
            EXPECT_EQ(member(first, last, 1), found(port(built(type), 1, 5))) << "type " << type;
            EXPECT_EQ(member(first, last, 2), found(port(built(type), 1, 6))) << "type " << type;
            EXPECT_EQ(member(first, last, 3), behind_the_last_port) << "type " << type;
        }
    });
}

TEST_F(range_member, of_ports_counts_modulo_256) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            for (const uint32_t base : {0U, 256U, 0x10000U, 0x7fffff00U, 0xffffff00U}) {
                for (uint32_t offset = base; offset - base < 256; ++offset) {
                    const uint32_t number = (10 + offset) % 256;
                    const range_result expected =
                        number > 20 ? behind_the_last_port : found(port(built(type), 1, number));
                    EXPECT_EQ(member(port(type, 1, 10), port(type, 1, 20), offset), expected) << offset;
                }
            }
        }
        EXPECT_EQ(member(port(1, 1, 10), port(1, 1, 20), 250), found(port(1, 1, 4)));
        EXPECT_EQ(member(port(1, 1, 10), port(1, 1, 20), 0xffffffff), found(port(1, 1, 9)));
        EXPECT_EQ(member(port(1, 1, 10), port(1, 1, 10), 256), found(port(1, 1, 10)));
        EXPECT_EQ(member(port(1, 1, 10), port(1, 1, 10), 1), behind_the_last_port);
    });
}

TEST_F(range_member, of_ports_is_built_from_slot_and_port) {
    for (const uint32_t type : slot_types) {
        in_fresh_process([&] {
            const if_index_t first = port(type, 3, 4, 8);
            const if_index_t last = port(type, 3, 6, 7);
            EXPECT_EQ(member(first, last, 1), found(port(built(type), 3, 5)));
            const char *const builder = type == 1 ? "if_index_phy_fc_port_init" : "if_index_phy_eth_port_init";
            expect_steps({both("if_index_get_type", first, last),
                          slots_and_ports(first, last),
                          {asks_platform},
                          {fmt::format("{}(3, 5, 0)", builder)}});
        });
    }
}

TEST_F(range_member, of_ports_is_not_built_behind_the_last_port) {
    in_fresh_process([&] {
        const if_index_t first = port(1, 1, 4);
        const if_index_t last = port(1, 1, 6);
        EXPECT_EQ(member(first, last, 3), behind_the_last_port);
        expect_steps({both("if_index_get_type", first, last), slots_and_ports(first, last), {asks_platform}});
    });
}

TEST_F(range_member, of_ports_is_a_main_interface_at_offset_0_and_of_one_port) {
    in_fresh_process([&] {
        EXPECT_EQ(member(port(2, 1, 3, 10), port(2, 1, 4, 12), 0), found(port(2, 1, 3)));
        EXPECT_EQ(member(port(2, 1, 3, 12), port(2, 1, 3, 10), 0), found(port(2, 1, 3)));
        EXPECT_EQ(member(port(2, 1, 3, 10), port(2, 1, 3, 12), 1), behind_the_last_port);
        EXPECT_THAT(take(), testing::Not(testing::Contains(testing::StartsWith("if_index_phy_eth_get_sub_intf"))));
    });
}

TEST_F(range_member, of_ports_is_refused_backwards_and_across_slots) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            for (const uint32_t offset : {0U, 1U, 250U, 256U}) {
                EXPECT_EQ(member(port(type, 1, 6), port(type, 1, 5), offset), no_such_range) << offset;
                EXPECT_EQ(member(port(type, 1, 255), port(type, 1, 0), offset), no_such_range) << offset;
                EXPECT_EQ(member(port(type, 1, 5), port(type, 2, 6), offset), no_such_range) << offset;
                EXPECT_EQ(member(port(type, 2, 5), port(type, 1, 6), offset), no_such_range) << offset;
            }
        }
    });
}

TEST_F(range_member, of_ports_needs_both_slots_and_both_ports) {
    in_fresh_process([&] {
        for_each_failure([&] {
            for (const uint32_t type : slot_types) {
                const if_index_t first = port(type, 1, 5);
                const if_index_t last = port(type, 1, 7);
                for (const if_index_t end : {first, last}) {
                    for (auto *const failing : {&numbers.without_slot, &numbers.without_port}) {
                        *failing = {end};
                        EXPECT_EQ(member(first, last, 0), no_such_range) << fmt::format("{:#x}", end);
                        failing->clear();
                    }
                }
                // The number of slots is not asked for before both ends are taken apart.
                EXPECT_THAT(take(), testing::Not(testing::Contains(asks_platform)));
            }
        });
    });
}

// ---- channels and tunnels

TEST_F(range_member, of_numbers_is_the_number_that_far_from_the_first) {
    for (const uint32_t type : numbered_types) {
        const if_index_t first = numbered(type, 5);
        const if_index_t last = numbered(type, 9);
        for (uint32_t offset = 0; offset <= 4; ++offset) {
            take();
            EXPECT_EQ(member(first, last, offset), found(numbered(built(type), 5 + offset))) << "type " << type;
            expect_steps({both("if_index_get_type", first, last),
                          both(number_getter(type), first, last),
                          {build_call(type, 5 + offset)}});
        }
        EXPECT_EQ(member(numbered(type, 0), numbered(type, 65535), 65535), found(numbered(built(type), 65535)));
    }
}

TEST_F(range_member, of_numbers_is_refused_behind_the_last_without_wrapping_around) {
    for (const uint32_t type : numbered_types) {
        const if_index_t first = numbered(type, 5);
        const if_index_t last = numbered(type, 9);
        for (const uint32_t offset : {5U, 6U, 251U, 256U, 0xffffU, 0x10000U, 0x10004U, 0x7fffffffU, 0x80000000U,
                                      0xfffffffaU, 0xfffffffbU, 0xffffffffU}) {
            take();
            EXPECT_EQ(member(first, last, offset), no_such_range) << "type " << type << ", " << offset;
            expect_steps({both("if_index_get_type", first, last), both(number_getter(type), first, last)});
        }
        EXPECT_EQ(member(numbered(type, 0), numbered(type, 65535), 65536), no_such_range) << "type " << type;
        EXPECT_EQ(member(first, first, 1), no_such_range) << "type " << type;
        EXPECT_EQ(member(first, first, 0xffffffff), no_such_range) << "type " << type;
    }
}

TEST_F(range_member, of_numbers_is_refused_when_the_indexes_go_backwards) {
    for (const uint32_t type : numbered_types) {
        const if_index_t first = numbered(type, 9);
        const if_index_t last = numbered(type, 8);
        take();
        EXPECT_EQ(member(first, last, 0), no_such_range) << "type " << type;
        expect_types_asked_alone(first, last);
        special_numbers(type) = {{first, 3}, {last, 7}};
        EXPECT_EQ(member(first, last, 1), no_such_range) << "type " << type << ", numbers forwards";
    }
}

TEST_F(range_member, of_numbers_is_refused_when_only_the_numbers_go_backwards) {
    for (const uint32_t type : numbered_types) {
        special_numbers(type) = {{numbered(type, 3), 5}, {numbered(type, 4), 3}};
        EXPECT_EQ(member(numbered(type, 3), numbered(type, 4), 0), no_such_range) << "type " << type;
    }
}

TEST_F(range_member, of_numbers_compares_indexes_as_unsigned_numbers) {
    constexpr if_index_t high = 0x84000009;
    for (const uint32_t type : numbered_types) {
        interfaces.special_types = {{high, static_cast<uint8_t>(type)}};
        special_numbers(type) = {{high, 9}};
        EXPECT_EQ(member(numbered(type, 3), high, 1), found(numbered(built(type), 4))) << "type " << type;
        EXPECT_EQ(member(high, numbered(type, 10), 0), no_such_range) << "type " << type;
    }
}

TEST_F(range_member, of_numbers_takes_0_for_a_number_that_cannot_be_told) {
    for_each_result([&] {
        for (const uint32_t type : numbered_types) {
            const if_index_t first = numbered(type, 5);
            const if_index_t last = numbered(type, 9);
            without_number(type) = {first};
            EXPECT_EQ(member(first, last, 0), found(numbered(built(type), 0))) << "type " << type;
            EXPECT_EQ(member(first, last, 9), found(numbered(built(type), 9))) << "type " << type;
            EXPECT_EQ(member(first, last, 10), no_such_range) << "type " << type;
            without_number(type) = {last};
            EXPECT_EQ(member(first, last, 0), no_such_range) << "type " << type;
            without_number(type) = {first, last};
            EXPECT_EQ(member(first, last, 0), found(numbered(built(type), 0))) << "type " << type;
            EXPECT_EQ(member(first, last, 1), no_such_range) << "type " << type;
        }
    });
}

// ---- indexes that cannot be built

TEST_F(range_member, is_not_written_when_the_index_cannot_be_built) {
    in_fresh_process([&] {
        for (const uint32_t type : {1U, 2U, 13U, 4U, 22U, 10U}) {
            const bool ports = std::ranges::find(slot_types, type) != std::end(slot_types);
            const if_index_t last = ports ? port(type, 1, 7) : numbered(type, 7);
            const if_index_t first = ports ? port(type, 1, 5) : numbered(type, 5);
            numbers.unbuildable = {ports ? port(built(type), 1, 6) : numbered(built(type), 6)};
            EXPECT_EQ(member(first, last, 1).output, untouched_output) << "type " << type;
        }
    });
}

}  // namespace
