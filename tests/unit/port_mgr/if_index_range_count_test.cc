// SPDX-License-Identifier: Apache-2.0
// The number of interfaces in a range.
#include "range_fixture.h"

namespace {

using support::call_log::take;
using unit::asks_platform;
using unit::count;
using unit::counted;
using unit::not_counted;
using unit::numbered;
using unit::port;
using unit::range_result;

constexpr uint32_t counted_types[] = {1, 2, 4, 5, 10, 11, 13, 22};
constexpr uint32_t slot_types[] = {1, 2, 11, 13};
constexpr uint32_t channel_types[] = {4, 22};

using range_count = unit::range_test;

// ---- types

TEST_F(range_count, is_of_eight_types) {
    in_fresh_process([&] {
        for (uint32_t type = 0; type < 256; ++type) {
            range_result expected = not_counted;
            if (type == 1 || type == 2 || type == 11 || type == 13) expected = counted(3);
            if (type == 4 || type == 22 || type == 10) expected = counted(0x201);
            if (type == 5) expected = counted(1);
            EXPECT_EQ(count(port(type, 1, 5), port(type, 1, 7)), expected) << "type " << type;
        }
    });
}

TEST_F(range_count, asks_for_no_more_than_the_types_of_a_type_it_refuses) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (std::ranges::find(counted_types, type) != std::end(counted_types)) continue;
        EXPECT_EQ(count(port(type, 1, 5), port(type, 1, 7)), not_counted) << "type " << type;
        expect_types_asked_alone(port(type, 1, 5), port(type, 1, 7));
    }
}

TEST_F(range_count, is_of_one_type_only) {
    for (const uint32_t first : counted_types) {
        for (const uint32_t last : counted_types) {
            if (first == last) continue;
            EXPECT_EQ(count(port(first, 1, 5), port(last, 1, 5)), not_counted) << first << " to " << last;
            expect_types_asked_alone(port(first, 1, 5), port(last, 1, 5));
        }
    }
}

TEST_F(range_count, fails_with_the_status_of_a_type_that_cannot_be_told) {
    for (const uint32_t type : {1U, 2U, 3U, 4U, 5U, 10U, 11U, 13U, 22U}) {
        for (const uint32_t last_type : {type, 4U, 3U}) {
            const if_index_t first = port(type, 1, 5);
            const if_index_t last = port(last_type, 1, 7);
            for (const uint32_t status : {0xffffffffU, 1U, PM_ERR_INVALID_PARAM}) {
                interfaces.without_type_result = static_cast<int32_t>(status);
                for (const std::set<if_index_t> &failing : {std::set{first}, std::set{last}, std::set{first, last}}) {
                    interfaces.without_type = failing;
                    EXPECT_EQ(count(first, last), (range_result{status, 0})) << type << " to " << last_type;
                    EXPECT_THAT(take(), testing::Each(testing::StartsWith("if_index_get_type")));
                }
            }
        }
    }
}

TEST_F(range_count, fails_with_the_status_of_a_single_index_without_type) {
    interfaces.without_type = {port(1, 1, 5)};
    interfaces.without_type_result = 77;
    EXPECT_EQ(count(port(1, 1, 5), port(1, 1, 5)), (range_result{77, 0}));
}

// ---- ports

TEST_F(range_count, of_ports_ends_with_the_last_port) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            for (uint32_t last = 0; last < 256; ++last) {
                EXPECT_EQ(count(port(type, 1, 0), port(type, 1, last)), counted(last + 1)) << "type " << type;
                EXPECT_EQ(count(port(type, 1, last), port(type, 1, 255)), counted(256 - last)) << "type " << type;
                EXPECT_EQ(count(port(type, 1, last), port(type, 1, last)), counted(1)) << "type " << type;
            }
        }
    });
}

TEST_F(range_count, of_ports_is_refused_backwards) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            for (uint32_t last = 0; last < 255; ++last) {
                EXPECT_EQ(count(port(type, 1, 255), port(type, 1, last)), not_counted) << "type " << type;
                EXPECT_EQ(count(port(type, 1, last + 1), port(type, 1, last)), not_counted) << "type " << type;
            }
        }
    });
}

TEST_F(range_count, of_ports_is_refused_across_slots) {
    in_fresh_process([&] {
        for (const uint32_t type : slot_types) {
            EXPECT_EQ(count(port(type, 1, 5), port(type, 2, 1)), not_counted) << "type " << type;
            EXPECT_EQ(count(port(type, 1, 5), port(type, 2, 6)), not_counted) << "type " << type;
            EXPECT_EQ(count(port(type, 2, 5), port(type, 1, 6)), not_counted) << "type " << type;
            EXPECT_EQ(count(port(type, 0, 5), port(type, 254, 5)), not_counted) << "type " << type;
        }
    });
}

TEST_F(range_count, of_ports_needs_both_slots_and_both_ports) {
    in_fresh_process([&] {
        for_each_failure([&] {
            for (const uint32_t type : slot_types) {
                const if_index_t first = port(type, 1, 5);
                const if_index_t last = port(type, 1, 7);
                for (const if_index_t end : {first, last}) {
                    for (auto *const failing : {&numbers.without_slot, &numbers.without_port}) {
                        *failing = {end};
                        EXPECT_EQ(count(first, last), not_counted) << fmt::format("{:#x}", end);
                        failing->clear();
                    }
                }
                // The number of slots is not asked for before both ends are taken apart.
                EXPECT_THAT(take(), testing::Not(testing::Contains(asks_platform)));
            }
        });
    });
}

TEST_F(range_count, of_ports_asks_for_types_then_slots_and_ports_then_the_number_of_slots) {
    for (const uint32_t type : slot_types) {
        in_fresh_process([&] {
            const if_index_t first = port(type, 1, 5, 9);
            const if_index_t last = port(type, 1, 7, 8);
            EXPECT_EQ(count(first, last), counted(3)) << "type " << type;
            expect_steps({both("if_index_get_type", first, last), slots_and_ports(first, last), {asks_platform}});
        });
    }
}

// ---- sub-interfaces

TEST_F(range_count, of_one_ethernet_port_is_of_its_sub_interfaces) {
    in_fresh_process([&] {
        EXPECT_EQ(count(port(2, 1, 3, 10), port(2, 1, 3, 12)), counted(3));
        EXPECT_EQ(count(port(2, 1, 3, 10), port(2, 1, 3, 10)), counted(1));
        EXPECT_EQ(count(port(2, 1, 3, 0), port(2, 1, 3, 255)), counted(256));
        EXPECT_EQ(count(port(2, 1, 3, 12), port(2, 1, 3, 10)), not_counted);
        EXPECT_EQ(count(port(2, 1, 3, 1), port(2, 1, 3, 0)), not_counted);
    });
}

TEST_F(range_count, of_sub_interfaces_goes_by_16_bit_numbers_and_not_by_indexes) {
    const if_index_t first = port(2, 1, 3, 200);
    const if_index_t last = port(2, 1, 3, 100);
    in_fresh_process([&] {
        numbers.special_sub_interfaces = {{first, 0}, {last, 65535}};
        EXPECT_EQ(count(first, last), counted(65536));
        EXPECT_EQ(count(last, first), not_counted);
        numbers.special_sub_interfaces = {{first, 300}, {last, 300}};
        EXPECT_EQ(count(first, last), counted(1));
        numbers.special_sub_interfaces = {{first, 0x00ff}, {last, 0x0100}};
        EXPECT_EQ(count(first, last), counted(2));
        EXPECT_EQ(count(last, first), not_counted);
    });
}

TEST_F(range_count, of_one_ethernet_port_needs_both_sub_interfaces) {
    const if_index_t first = port(2, 1, 3, 10);
    const if_index_t last = port(2, 1, 3, 12);
    in_fresh_process([&] {
        for_each_failure([&] {
            for (const if_index_t end : {first, last}) {
                numbers.without_sub_interface = {end};
                EXPECT_EQ(count(first, last), not_counted) << fmt::format("{:#x}", end);
                EXPECT_EQ(count(end, end), not_counted) << fmt::format("{:#x}", end);
            }
        });
    });
}

TEST_F(range_count, of_one_ethernet_port_asks_for_sub_interfaces_last) {
    const if_index_t first = port(2, 1, 3, 10);
    const if_index_t last = port(2, 1, 3, 12);
    in_fresh_process([&] {
        EXPECT_EQ(count(first, last), counted(3));
        expect_steps({both("if_index_get_type", first, last),
                      slots_and_ports(first, last),
                      {asks_platform},
                      both("if_index_phy_eth_get_sub_intf", first, last)});
    });
}

TEST_F(range_count, of_several_ethernet_ports_is_the_same_whatever_the_sub_interfaces) {
    in_fresh_process([&] {
        EXPECT_EQ(count(port(2, 1, 3, 12), port(2, 1, 4, 10)), counted(2));
        EXPECT_EQ(count(port(2, 1, 3, 10), port(2, 1, 4, 12)), counted(2));
        numbers.without_sub_interface = {port(2, 1, 3, 10), port(2, 1, 4, 12)};
        EXPECT_EQ(count(port(2, 1, 3, 10), port(2, 1, 4, 12)), counted(2));
        EXPECT_THAT(take(), testing::Not(testing::Contains(testing::StartsWith("if_index_phy_eth_get_sub_intf"))));
        EXPECT_EQ(count(port(2, 1, 4, 10), port(2, 1, 3, 12)), not_counted) << "backwards";
    });
}

TEST_F(range_count, of_other_ports_knows_no_sub_interfaces) {
    in_fresh_process([&] {
        for (const uint32_t type : {1U, 11U, 13U}) {
            EXPECT_EQ(count(port(type, 1, 3, 10), port(type, 1, 3, 12)), counted(1)) << "type " << type;
            EXPECT_EQ(count(port(type, 1, 3, 12), port(type, 1, 3, 10)), counted(1)) << "type " << type;
        }
        EXPECT_THAT(take(), testing::Not(testing::Contains(testing::StartsWith("if_index_phy_eth_get_sub_intf"))));
    });
}

// ---- channels

TEST_F(range_count, of_channels_ends_with_the_last_channel) {
    for (const uint32_t type : channel_types) {
        EXPECT_EQ(count(numbered(type, 5), numbered(type, 5)), counted(1)) << "type " << type;
        EXPECT_EQ(count(numbered(type, 0), numbered(type, 65535)), counted(65536)) << "type " << type;
        take();
        EXPECT_EQ(count(numbered(type, 3), numbered(type, 9)), counted(7)) << "type " << type;
        expect_steps({both("if_index_get_type", numbered(type, 3), numbered(type, 9)),
                      both("if_index_port_channel_get_channel_num", numbered(type, 3), numbered(type, 9))});
    }
}

TEST_F(range_count, of_channels_is_refused_when_the_indexes_go_backwards) {
    for (const uint32_t type : channel_types) {
        const if_index_t first = numbered(type, 9);
        const if_index_t last = numbered(type, 8);
        EXPECT_EQ(count(first, last), not_counted) << "type " << type;
        expect_types_asked_alone(first, last);
        numbers.special_channels = {{first, 3}, {last, 7}};
        EXPECT_EQ(count(first, last), not_counted) << "type " << type << ", channels forwards";
        take();
    }
}

TEST_F(range_count, of_channels_compares_indexes_as_unsigned_numbers) {
    constexpr if_index_t high = 0x84000009;
    for (const uint32_t type : channel_types) {
        interfaces.special_types = {{high, static_cast<uint8_t>(type)}};
        EXPECT_EQ(count(numbered(type, 3), high), counted(7)) << "type " << type;
        EXPECT_EQ(count(high, numbered(type, 10)), not_counted) << "type " << type;
    }
}

TEST_F(range_count, of_channels_wraps_around_when_only_the_channels_go_backwards) {
    for (const uint32_t type : channel_types) {
        numbers.special_channels = {{numbered(type, 3), 5}, {numbered(type, 4), 3}};
        EXPECT_EQ(count(numbered(type, 3), numbered(type, 4)), counted(0xffffffff)) << "type " << type;
    }
}

TEST_F(range_count, of_channels_takes_0_for_a_channel_that_cannot_be_told) {
    for_each_result([&] {
        for (const uint32_t type : channel_types) {
            const if_index_t first = numbered(type, 5);
            const if_index_t last = numbered(type, 9);
            numbers.without_channel = {first};
            EXPECT_EQ(count(first, last), counted(10)) << "type " << type;
            numbers.without_channel = {last};
            EXPECT_EQ(count(first, last), counted(0U - 5 + 1)) << "type " << type;
            numbers.without_channel = {first, last};
            EXPECT_EQ(count(first, last), counted(1)) << "type " << type;
        }
    });
}

// ---- type 5

TEST_F(range_count, of_type_5_is_1_whatever_the_ends) {
    for (const auto &[first, last] : {std::pair{5U, 5U}, {5U, 9U}, {9U, 5U}, {0U, 0xffffffU}, {0xffffffU, 0U}}) {
        EXPECT_EQ(count(numbered(5, first), numbered(5, last)), counted(1)) << first << " to " << last;
        expect_types_asked_alone(numbered(5, first), numbered(5, last));
    }
}

// ---- tunnels

TEST_F(range_count, of_tunnels_ends_with_the_last_tunnel) {
    EXPECT_EQ(count(numbered(10, 5), numbered(10, 5)), counted(1));
    EXPECT_EQ(count(numbered(10, 0), numbered(10, 65535)), counted(65536));
    take();
    EXPECT_EQ(count(numbered(10, 3), numbered(10, 5)), counted(3));
    expect_steps({both("if_index_get_type", numbered(10, 3), numbered(10, 5)),
                  both("if_index_fcip_get_tunnel", numbered(10, 3), numbered(10, 5))});
}

TEST_F(range_count, of_tunnels_wraps_around_backwards) {
    EXPECT_EQ(count(numbered(10, 5), numbered(10, 3)), counted(4294967295));
    EXPECT_EQ(count(numbered(10, 5), numbered(10, 4)), counted(0));
    EXPECT_EQ(count(numbered(10, 65535), numbered(10, 0)), counted(0xffff0002));
}

TEST_F(range_count, of_tunnels_goes_by_tunnels_and_not_by_indexes) {
    numbers.special_tunnels = {{numbered(10, 9), 3}, {numbered(10, 8), 7}};
    EXPECT_EQ(count(numbered(10, 9), numbered(10, 8)), counted(5));
}

TEST_F(range_count, of_tunnels_needs_both_tunnels) {
    for_each_failure([&] {
        for (const if_index_t end : {numbered(10, 3), numbered(10, 5)}) {
            numbers.without_tunnel = {end};
            EXPECT_EQ(count(numbered(10, 3), numbered(10, 5)), not_counted) << fmt::format("{:#x}", end);
            EXPECT_EQ(count(end, end), not_counted) << fmt::format("{:#x}", end);
        }
    });
}

}  // namespace
