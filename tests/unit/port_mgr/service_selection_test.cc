// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>

#include "library_test.h"
#include "port_mgr/port_mgr_common.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

constexpr if_index_t channel = 0x04001000;
constexpr if_index_t fc_port = 0x01040000;
constexpr if_index_t ethernet_port = 0x02040000;

class service_selection : public support::library_test {};

// ---- pm_get_mts_sap

TEST_F(service_selection, every_type_has_its_owner) {
    for (uint32_t type = 0; type < 256; ++type) {
        uint32_t owner = 43;
        if (type == 2) owner = 45;
        if (type == 5) owner = 179;
        if (type == 20 || type == 26) owner = 175;
        EXPECT_EQ(pm_get_mts_sap(type << 24 | 0x123456), owner) << "type " << type;
    }
}

TEST_F(service_selection, only_port_channels_are_looked_up) {
    for (uint32_t type = 0; type < 256; ++type) {
        support::call_log::take();
        pm_get_mts_sap(type << 24);
        const bool looked_up = support::call_log::take().size() > 1;
        EXPECT_EQ(looked_up, type == 4 || type == 22) << "type " << type;
    }
}

TEST_F(service_selection, the_type_is_asked_for_once) {
    EXPECT_EQ(pm_get_mts_sap(fc_port), 43U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("if_index_get_type(0x01040000)"));
}

TEST_F(service_selection, an_index_without_type_belongs_to_the_port_manager) {
    interfaces.without_type = {ethernet_port};
    EXPECT_EQ(pm_get_mts_sap(ethernet_port), 43U);
    EXPECT_EQ(output.take(), "pm_get_mts_sap: if_index_get_type failed\n");
    EXPECT_THAT(support::call_log::take(), ElementsAre("if_index_get_type(0x02040000)"));
}

// ---- classification of port channels, by chassis type

struct chassis_case {
    const char *name;
    int32_t result;
    std::optional<uint32_t> type;
    bool asks_database;  // else the map
};

void PrintTo(const chassis_case &chassis, std::ostream *to) { *to << chassis.name; }

// One channel, whose members the chassis keeps where it does.
class channel_kind : public service_selection, public testing::WithParamInterface<chassis_case> {
  protected:
    channel_kind() {
        interfaces.chassis_result = GetParam().result;
        interfaces.chassis_type = GetParam().type;
    }

    void set_members(uint32_t count, if_index_t first) {
        loader.member_count = interfaces.map_count = count;
        loader.member = interfaces.map_member = first;
        if (GetParam().result == 0) return;
        // Without a chassis type, the record is read as the map's, whoever filled it.
        loader.count_offset = 8;
        loader.member_offset = 32;
    }

    void expect_kind(if_index_t if_index, bool is_ethernet) {
        EXPECT_EQ(pm_port_channel_type(if_index), is_ethernet ? 2U : 1U);
        EXPECT_EQ(pm_is_ether_channel(if_index), is_ethernet ? 1 : 0);
        EXPECT_EQ(pm_get_mts_sap(if_index), is_ethernet ? 175U : 43U);
        EXPECT_EQ(pm_get_mts_sap(0x16000000 | (if_index & 0xffffff)), is_ethernet ? 175U : 43U);
    }
};

TEST_P(channel_kind, follows_an_ethernet_member) {
    set_members(3, ethernet_port);
    expect_kind(channel, true);
}

TEST_P(channel_kind, follows_the_type_of_any_other_member) {
    for (uint32_t type = 0; type < 256; ++type) {
        if (type == 2) continue;
        set_members(1, type << 24 | 0x40000);
        EXPECT_EQ(pm_port_channel_type(channel), 1U) << "type " << type;
        EXPECT_EQ(pm_is_ether_channel(channel), 0) << "type " << type;
    }
}

TEST_P(channel_kind, is_fibre_channel_without_members) {
    set_members(0, ethernet_port);
    expect_kind(channel, false);
}

TEST_P(channel_kind, counts_members_in_32_bits) {
    set_members(0x80000000, ethernet_port);
    EXPECT_EQ(pm_port_channel_type(channel), 2U);
    set_members(0x100, ethernet_port);
    EXPECT_EQ(pm_port_channel_type(channel), 2U);
}

TEST_P(channel_kind, is_fibre_channel_when_the_first_member_is_0) {
    set_members(1, 0);
    support::call_log::take();
    EXPECT_EQ(pm_port_channel_type(channel), 1U);
    EXPECT_THAT(support::call_log::take(), Not(Contains(StartsWith("if_index_get_type"))));
}

TEST_P(channel_kind, is_fibre_channel_when_the_look_up_fails) {
    set_members(1, ethernet_port);
    interfaces.map_result = -5;
    loader.info_result = 5;
    expect_kind(channel, false);
}

TEST_P(channel_kind, is_fibre_channel_when_the_member_has_no_type) {
    set_members(1, ethernet_port);
    interfaces.without_type = {ethernet_port};
    expect_kind(channel, false);
}

TEST_P(channel_kind, is_ethernet_for_a_sub_interface_without_any_look_up) {
    set_members(1, fc_port);
    interfaces.channel_sub_interfaces = {channel};
    EXPECT_EQ(pm_port_channel_type(channel), 2U);
    EXPECT_THAT(support::call_log::take(), ElementsAre("if_index_is_port_channel_sub_interface(0x04001000)"));
    EXPECT_EQ(pm_is_ether_channel(channel), 1);
    EXPECT_EQ(pm_get_mts_sap(channel), 175U);
}

TEST_P(channel_kind, is_looked_up_where_the_chassis_keeps_it) {
    set_members(1, ethernet_port);
    EXPECT_EQ(pm_port_channel_type(channel), 2U);
    const std::vector<std::string> before{"if_index_is_port_channel_sub_interface(0x04001000)",
                                          "pdb_get_chassis_type(0)"};
    const std::vector<std::string> from_map{"pcmap_get_port_channel(0x04001000)"};
    const std::vector<std::string> from_database{"dlopen(libfsrv_client.so, RTLD_LAZY)",
                                                 "dlsym(libfsrv_client.so, fsrv_sdb_subscriber_init)",
                                                 "dlerror()",
                                                 "fsrv_sdb_subscriber_init(7, clish, 262, 0 0 0 0)",
                                                 "dlopen(libpcm_sdb.so, RTLD_NOW)",
                                                 "dlsym(libpcm_sdb.so, pcm_get_pc_info)",
                                                 "dlerror()",
                                                 "pcm_get_pc_info(0x04001000)",
                                                 "dlclose(libpcm_sdb.so)",
                                                 "dlclose(libfsrv_client.so)"};
    std::vector<std::string> expected = before;
    const auto &look_up = GetParam().asks_database ? from_database : from_map;
    expected.insert(expected.end(), look_up.begin(), look_up.end());
    expected.emplace_back("if_index_get_type(0x02040000)");
    EXPECT_EQ(support::call_log::take(), expected);
}

INSTANTIATE_TEST_SUITE_P(chassis, channel_kind,
                         testing::Values(chassis_case{"type_0", 0, 0, false}, chassis_case{"type_1", 0, 1, false},
                                         chassis_case{"type_9", 0, 9, false}, chassis_case{"type_10", 0, 10, true},
                                         chassis_case{"type_11", 0, 11, true}, chassis_case{"type_12", 0, 12, false},
                                         chassis_case{"type_266", 0, 266, false},
                                         chassis_case{"largest_type", 0, 0xffffffff, false},
                                         chassis_case{"type_unread", -1, std::nullopt, false},
                                         chassis_case{"type_unread_but_10", -1, 10, true},
                                         chassis_case{"type_unread_but_1", 1, 1, false}),
                         [](const auto &each) { return std::string(each.param.name); });

TEST_F(service_selection, a_database_that_is_missing_makes_fibre_channel) {
    interfaces.chassis_type = 10;
    loader.member_count = 1;
    loader.member = ethernet_port;
    loader.missing_libraries = {"libfsrv_client.so"};
    EXPECT_EQ(pm_get_mts_sap(channel), 43U);
    EXPECT_EQ(output.take(), "Unable to open libfsrv_client.so!\n");
}

}  // namespace
