// SPDX-License-Identifier: Apache-2.0
#include "chassis/publication.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "chassis/chassis_file.h"
#include "names.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

platform_dev::chassis published() {
    return virtual_switch::publication_of(virtual_switch::parse_chassis(R"(
[chassis]
name = "test"
type = 11
slots = 4
[[module]]
slot = 2
kind = "ethernet"
ports = 1
[[module]]
slot = 3
kind = "ips"
ports = 2
[[fcip]]
name = "fcip1"
slot = 3
port = 2
[[port_channel]]
name = "port-channel2"
members = "Ethernet2/1"
[[port_channel]]
name = "port-channel3"
[[sub_interface]]
name = "Ethernet2/1.9"
)"));
}

TEST(publication, shows_the_chassis_and_its_modules) {
    const platform_dev::chassis chassis = published();
    EXPECT_EQ(chassis.chassis_type, 11u);
    EXPECT_EQ(chassis.slot_count, 4);
    ASSERT_EQ(chassis.modules.size(), 2u);
    EXPECT_EQ(chassis.modules[0].slot, 1);
    EXPECT_EQ(chassis.modules[0].card_type, 50);
    EXPECT_EQ(chassis.modules[1].slot, 2);
    EXPECT_EQ(chassis.modules[1].card_type, 41);
}

TEST(publication, shows_channels_also_without_members) {
    const platform_dev::chassis chassis = published();
    ASSERT_EQ(chassis.port_channels.size(), 2u);
    EXPECT_EQ(chassis.port_channels[0].if_index, index_of("port-channel2"));
    EXPECT_THAT(chassis.port_channels[0].members, ElementsAre(index_of("Ethernet2/1")));
    EXPECT_EQ(chassis.port_channels[1].if_index, index_of("port-channel3"));
    EXPECT_THAT(chassis.port_channels[1].members, IsEmpty());
}

TEST(publication, maps_main_interfaces_to_their_places) {
    const struct {
        const char *name;
        uint32_t node;
        uint8_t slot;
        uint8_t port_base;
    } expected[] = {{"Ethernet2/1", 0x202, 1, 0},        {"port-channel2", 0xfe000000, 0, 0},
                    {"port-channel3", 0xfe000000, 0, 0}, {"fcip1", 0x302, 2, 22},
                    {"if13-3/1", 0x302, 2, 0},           {"if13-3/2", 0x302, 2, 1}};
    const platform_dev::chassis chassis = published();
    ASSERT_EQ(chassis.index_map.size(), std::size(expected));
    for (size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(chassis.index_map[i].if_index, index_of(expected[i].name));
        EXPECT_EQ(chassis.index_map[i].node, expected[i].node) << expected[i].name;
        EXPECT_EQ(chassis.index_map[i].slot, expected[i].slot) << expected[i].name;
        EXPECT_EQ(chassis.index_map[i].port_base, expected[i].port_base) << expected[i].name;
    }
}

}  // namespace
