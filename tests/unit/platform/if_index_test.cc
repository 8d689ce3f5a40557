// SPDX-License-Identifier: Apache-2.0
#include "platform/if_index.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "platform_dev/if_index_dev.h"

namespace {

const std::set<unsigned> known_types = {1, 2, 4, 5, 10, 11, 13, 20, 22, 26, 254};
const std::set<unsigned> slot_port_types = {1, 2, 11, 13, 26};
const std::set<unsigned> channel_types = {4, 22};
const std::set<unsigned> sub_intf_types = {2, 4, 22, 26};

if_index_t of_type(unsigned type, uint32_t rest) { return type << 24 | rest; }

TEST(IfIndexType, IndexZeroIsTheStartOfAWalk) {
    uint8_t type = 99;
    EXPECT_EQ(if_index_get_type(0, &type), 0);
    EXPECT_EQ(type, 0);
    EXPECT_NE(if_index_get_type(1, &type), 0);
}

// Every getter succeeds for the types that have its field and leaves the result alone for the 256 - n others.
TEST(IfIndexGetters, SucceedExactlyForTheKindsWithTheField) {
    for (unsigned type = 0; type < 256; ++type) {
        const if_index_t index = of_type(type, 0x00abcdef);
        uint8_t narrow = 0x5a;
        EXPECT_EQ(if_index_get_type(index, &narrow) == 0, known_types.contains(type)) << type;
        EXPECT_EQ(narrow, known_types.contains(type) ? type : 0x5a);
        narrow = 0x5a;
        EXPECT_EQ(if_index_get_slot(index, &narrow) == 0, slot_port_types.contains(type)) << type;
        EXPECT_EQ(narrow, slot_port_types.contains(type) ? 0x15 : 0x5a);
        narrow = 0x5a;
        EXPECT_EQ(if_index_get_port(index, &narrow) == 0, slot_port_types.contains(type)) << type;
        EXPECT_EQ(narrow, slot_port_types.contains(type) ? 0x3c : 0x5a);
        narrow = 0x5a;
        EXPECT_EQ(if_index_port_channel_get_subtype(index, &narrow) == 0, channel_types.contains(type)) << type;
        EXPECT_EQ(narrow, channel_types.contains(type) ? 2 : 0x5a);
        uint16_t wide = 0x5a5a;
        EXPECT_EQ(if_index_port_channel_get_channel_num(index, &wide) == 0, channel_types.contains(type)) << type;
        EXPECT_EQ(wide, channel_types.contains(type) ? 0x2bc : 0x5a5a);
        wide = 0x5a5a;
        EXPECT_EQ(if_index_get_sub_intf(index, &wide) == 0, sub_intf_types.contains(type)) << type;
        EXPECT_EQ(wide, sub_intf_types.contains(type) ? 0xdef : 0x5a5a);
        wide = 0x5a5a;
        EXPECT_EQ(if_index_phy_eth_get_sub_intf(index, &wide) == 0, type == 2) << type;
        EXPECT_EQ(wide, type == 2 ? 0xdef : 0x5a5a);
        wide = 0x5a5a;
        EXPECT_EQ(if_index_fcip_get_tunnel(index, &wide) == 0, type == 10) << type;
        EXPECT_EQ(wide, type == 10 ? 0xcdef : 0x5a5a);
    }
}

TEST(IfIndexSubInterface, MainInterfaceIsTheIndexWithoutSubInterface) {
    for (unsigned type = 0; type < 256; ++type) {
        const if_index_t index = of_type(type, 0x00abcdef);
        EXPECT_EQ(if_index_get_mainintf_from_subintf(index),
                  sub_intf_types.contains(type) ? of_type(type, 0x00abc000) : index);
        EXPECT_EQ(if_index_get_mainintf_from_subintf(of_type(type, 0x00abc000)), of_type(type, 0x00abc000));
    }
}

TEST(IfIndexSubInterface, OnlyThoseOfPortChannelsArePortChannelSubInterfaces) {
    for (unsigned type = 0; type < 256; ++type) {
        EXPECT_EQ(if_index_is_port_channel_sub_interface(of_type(type, 1)), channel_types.contains(type)) << type;
        EXPECT_EQ(if_index_is_port_channel_sub_interface(of_type(type, 0x00fff000)), 0) << type;
    }
}

TEST(IfIndexBuilders, PutNumbersWhereTheyBelong) {
    if_index_t index = 0;
    EXPECT_EQ(if_index_phy_fc_port_init(&index, 21, 60, 0), 0);
    EXPECT_EQ(index, 0x01abc000u);
    EXPECT_EQ(if_index_phy_eth_port_init(&index, 21, 60, 0), 0);
    EXPECT_EQ(index, 0x02abc000u);
    EXPECT_EQ(if_index_port_channel_init(&index, 0x2bc), 0);
    EXPECT_EQ(index, 0x042bc000u);
    EXPECT_EQ(if_index_fcip_port_init(&index, 0xcdef), 0);
    EXPECT_EQ(index, 0x0a00cdefu);
    EXPECT_EQ(if_index_slot_port_init(&index, 26, 21, 60), 0);
    EXPECT_EQ(index, 0x1aabc000u);
    EXPECT_EQ(if_index_number_init(&index, 254, 0xabcdef), 0);
    EXPECT_EQ(index, 0xfeabcdefu);
    EXPECT_EQ(if_index_port_channel_subtype_init(&index, 22, 2, 0x2bc), 0);
    EXPECT_EQ(index, 0x16abc000u);
    EXPECT_EQ(if_index_sub_intf_init(&index, 0x16abc000u, 0xdef), 0);
    EXPECT_EQ(index, 0x16abcdefu);
}

TEST(IfIndexBuilders, EverySlotAndPortReadsBack) {
    for (unsigned slot = 0; slot < 256; ++slot) {
        for (unsigned port = 0; port < 256; ++port) {
            if_index_t index = 0x5a5a5a5a;
            const bool fits = slot < 32 && port < 128;
            ASSERT_EQ(
                if_index_phy_eth_port_init(&index, static_cast<uint8_t>(slot), static_cast<uint8_t>(port), 0) == 0,
                fits);
            if (!fits) {
                ASSERT_EQ(index, 0x5a5a5a5au);
                continue;
            }
            uint8_t got_slot = 255;
            uint8_t got_port = 255;
            ASSERT_EQ(if_index_get_slot(index, &got_slot), 0);
            ASSERT_EQ(if_index_get_port(index, &got_port), 0);
            ASSERT_EQ(got_slot, slot);
            ASSERT_EQ(got_port, port);
        }
    }
}

TEST(IfIndexBuilders, RefuseWhatDoesNotFitAndStoreNothing) {
    if_index_t index = 0x5a5a5a5a;
    EXPECT_NE(if_index_phy_fc_port_init(&index, 32, 0, 0), 0);
    EXPECT_NE(if_index_phy_fc_port_init(&index, 0, 128, 0), 0);
    EXPECT_NE(if_index_port_channel_init(&index, 1024), 0);
    EXPECT_NE(if_index_port_channel_subtype_init(&index, 4, 4, 1), 0);
    EXPECT_NE(if_index_port_channel_subtype_init(&index, 4, 0, 1024), 0);
    EXPECT_NE(if_index_port_channel_subtype_init(&index, 2, 0, 1), 0);
    EXPECT_NE(if_index_slot_port_init(&index, 4, 0, 0), 0);
    EXPECT_NE(if_index_slot_port_init(&index, 99, 0, 0), 0);
    EXPECT_NE(if_index_slot_port_init(&index, 2, 32, 0), 0);
    EXPECT_NE(if_index_number_init(&index, 5, 0x1000000), 0);
    EXPECT_NE(if_index_number_init(&index, 10, 0x10000), 0);
    EXPECT_NE(if_index_number_init(&index, 1, 0), 0);
    EXPECT_NE(if_index_sub_intf_init(&index, 0x02abc000u, 0), 0);
    EXPECT_NE(if_index_sub_intf_init(&index, 0x02abc000u, 4096), 0);
    EXPECT_NE(if_index_sub_intf_init(&index, 0x02abc001u, 2), 0);
    EXPECT_NE(if_index_sub_intf_init(&index, 0x01abc000u, 2), 0);
    EXPECT_NE(if_index_sub_intf_init(&index, 0, 2), 0);
    EXPECT_EQ(index, 0x5a5a5a5au);
}

TEST(IfIndexByteOrder, NetworkOrderIsMostSignificantByteFirst) {
    const uint8_t expected[] = {0x12, 0x34, 0x56, 0x78};
    const uint32_t wire = hton_if_index(0x12345678);
    EXPECT_EQ(memcmp(&wire, expected, sizeof expected), 0);
    EXPECT_EQ(ntoh_if_index(wire), 0x12345678u);
}

}  // namespace
