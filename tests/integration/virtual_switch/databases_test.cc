// SPDX-License-Identifier: Apache-2.0
// The platform's look-ups see the chassis that the daemon runs.
#include "platform/idxmap.h"
#include "platform/pdb.h"
#include "virtual_switch_test.h"

namespace {

using databases = virtual_switch_test;

TEST_F(databases, show_the_chassis) {
    const virtual_switch_process daemon(director);
    uint32_t type = 0;
    platform_info_t platform{};
    EXPECT_EQ(pdb_get_chassis_type(&type), 0);
    EXPECT_EQ(type, 6u);
    EXPECT_GE(get_platform_info(&platform), 0);
    EXPECT_EQ(platform.byte[2], 9);
}

TEST_F(databases, show_modules) {
    const virtual_switch_process daemon(director);
    pdb_mod_info_t module{};
    ASSERT_EQ(pdb_get_mod_info(4, &module, 2), 0);
    uint16_t card_type = 0;
    memcpy(&card_type, &module.byte[2], sizeof card_type);
    EXPECT_EQ(card_type, 41);
    EXPECT_NE(pdb_get_mod_info(5, &module, 2), 0);
}

TEST_F(databases, show_where_interfaces_live) {
    const virtual_switch_process daemon(director);
    uint32_t node = 0;
    EXPECT_EQ(idxmap_node_by_if_index(index_of("fc3/1"), &node), 0);
    EXPECT_EQ(node, 0x302u);
    EXPECT_EQ(idxmap_node_by_if_index(index_of("mgmt0"), &node), 0);
    EXPECT_EQ(node, PM_NODE_SUPERVISOR);
    idxmap_entry_t entry{};
    ASSERT_EQ(idxmap_entry_by_if_index(index_of("fcip2"), &entry), 0);
    EXPECT_EQ(entry.byte[8], 4);
    EXPECT_EQ(entry.byte[9], 22);
    EXPECT_NE(idxmap_node_by_if_index(index_of("fc9/1"), &node), 0);
}

TEST_F(databases, show_members_in_the_map) {
    const virtual_switch_process daemon(director);
    std::array<uint8_t, 172> record{};
    ASSERT_EQ(get_port_channel_members(6, index_of("port-channel5"), record.data()), 0);
    uint32_t count = 0;
    memcpy(&count, &record[8], sizeof count);
    EXPECT_EQ(count, 8u);
}

TEST_F(databases, route_by_the_port_channel_database_of_a_fixed_switch) {
    const virtual_switch_process daemon(fixed_switch);
    EXPECT_EQ(pm_is_ether_channel(index_of("port-channel1")), 0);
    EXPECT_EQ(pm_is_ether_channel(index_of("port-channel2")), 1);
    EXPECT_EQ(get_port_channel_info(index_of("fc1/2"), index_of("port-channel1")), 0);
    EXPECT_EQ(get_port_channel_info(index_of("fc1/3"), index_of("port-channel1")), -1);
    for (const char *channel : {"port-channel1", "port-channel2", "port-channel2.7"})
        EXPECT_THAT(names_of(client_.range(channel, channel).records), testing::ElementsAre(channel));
}

TEST_F(databases, go_with_the_daemon) {
    uint32_t type = 0;
    {
        virtual_switch_process daemon(director);
        daemon.send(SIGTERM);
        EXPECT_EQ(daemon.wait(), 0);
    }
    EXPECT_NE(pdb_get_chassis_type(&type), 0);
}

}  // namespace
