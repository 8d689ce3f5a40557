// SPDX-License-Identifier: Apache-2.0
// Queries of a whole director through the library.
#include <algorithm>
#include <set>

#include "chassis/chassis_file.h"
#include "protocol/port_info_layout.h"
#include "virtual_switch_test.h"

namespace {

using testing::ElementsAre;

class director_queries : public virtual_switch_test {
  protected:
    virtual_switch_process daemon_{director};
    virtual_switch::chassis_model model_ = virtual_switch::load_chassis(director);

    [[nodiscard]] std::vector<std::string> all_names() const {
        std::vector<std::string> names;
        for (const auto &[if_index, port] : model_.ports) names.push_back(name_of(if_index));
        return names;
    }
};

TEST_F(director_queries, all_ports_in_full) {
    const auto answer = client_.ports(PM_PORT_INFO_MODE_ALL, {});
    EXPECT_EQ(answer.status, 0u);
    EXPECT_EQ(names_of(answer.records), all_names());
}

TEST_F(director_queries, all_ports_in_brief) {
    const auto answer = client_.brief(PM_PORT_INFO_MODE_ALL, {});
    EXPECT_EQ(answer.status, 0u);
    EXPECT_EQ(names_of(answer.records), all_names());
}

TEST_F(director_queries, a_range) {
    const auto answer = client_.range("fc1/47", "fc2/2");
    EXPECT_EQ(answer.status, 0u);
    EXPECT_THAT(names_of(answer.records), ElementsAre("fc1/47", "fc1/48", "fc2/1", "fc2/2"));
}

TEST_F(director_queries, ranges_in_order_of_the_request) {
    const auto answer = client_.ports(PM_PORT_INFO_MODE_RANGES, {range_of("fc2/2", "fc2/3"), range_of("fc1/1", "fc1/1"),
                                                                 range_of("Ethernet4/6", "Ethernet4/8")});
    EXPECT_THAT(names_of(answer.records),
                ElementsAre("fc2/2", "fc2/3", "fc1/1", "Ethernet4/6", "Ethernet4/7", "Ethernet4/7.100",
                            "Ethernet4/7.101", "Ethernet4/7.102", "Ethernet4/8"));
}

TEST_F(director_queries, ranges_in_brief) {
    const auto answer =
        client_.brief(PM_PORT_INFO_MODE_RANGES, {range_of("mgmt0", "mgmt0"), range_of("fc1/1", "fc1/2")});
    EXPECT_THAT(names_of(answer.records), ElementsAre("mgmt0", "fc1/1", "fc1/2"));
}

TEST_F(director_queries, values_arrive_in_full) {
    const auto answer = client_.range("fc1/1", "fc1/1");
    ASSERT_EQ(answer.records.size(), 1u);
    const pm_port_info_t &port = answer.records[0];
    EXPECT_EQ(port.admin_mode, 4u);
    EXPECT_EQ(port.oper_mode, 8u);
    EXPECT_EQ(port.oper_state, 8);
    EXPECT_EQ(port.oper_speed, 8000u);
    EXPECT_EQ(port.port_vsan, 10);
    EXPECT_EQ(port.bb_credit[3], 32u);
    EXPECT_EQ(port.bb_credit[4], 500u);
    EXPECT_EQ(port.encap, 2);
    EXPECT_EQ(port.parent_if_index, index_of("port-channel5"));
}

TEST_F(director_queries, values_arrive_in_brief) {
    const auto answer = client_.brief(PM_PORT_INFO_MODE_RANGES, {range_of("fc2/4", "fc2/4")});
    ASSERT_EQ(answer.records.size(), 1u);
    EXPECT_EQ(answer.records[0].oper_state, 2);
    EXPECT_EQ(answer.records[0].state_reason, 83);
    EXPECT_EQ(answer.records[0].parent_if_index, index_of("port-channel5"));
}

// What the library decodes is what the chassis file says, member by member and port by port.
TEST_F(director_queries, every_port_arrives_as_it_is) {
    for (const auto &[if_index, port] : model_.ports) {
        const std::string name = name_of(if_index);
        const auto answer = client_.range(name.c_str(), name.c_str());
        const auto found = std::find_if(answer.records.begin(), answer.records.end(),
                                        [&](const auto &record) { return record.if_index == if_index; });
        ASSERT_NE(found, answer.records.end()) << name;
        pm_port_info_t expected = port.info;
        if (!traits_of(port.kind).attributes.test(22)) expected.bb_credit[4] = 0;
        EXPECT_EQ(std::memcmp(&*found, &expected, sizeof expected), 0) << name;
    }
}

TEST_F(director_queries, the_owner_comes_with_a_single_port) {
    EXPECT_STREQ(client_.range("fc1/17", "fc1/17").records.at(0).owner, "storage team");
    EXPECT_STREQ(client_.range("fc1/17", "fc1/18").records.at(0).owner, "");
    EXPECT_STREQ(client_.next(index_of("fc1/16")).records.at(0).owner, "storage team");
}

TEST_F(director_queries, walking_visits_every_port_once) {
    std::vector<std::string> visited;
    if_index_t at = 0;
    for (;;) {
        const auto answer = client_.next(at);
        if (answer.status != 0) {
            EXPECT_EQ(answer.status, PM_ERR_INVALID_RANGE);
            break;
        }
        ASSERT_EQ(answer.records.size(), 1u);
        at = answer.records[0].if_index;
        visited.push_back(name_of(at));
        ASSERT_LE(visited.size(), model_.ports.size());
    }
    EXPECT_EQ(visited, all_names());
}

TEST_F(director_queries, a_range_where_nothing_is) {
    EXPECT_EQ(client_.range("fc4/1", "fc4/9").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.range("fc1/9", "fc1/1").status, PM_ERR_INVALID_RANGE);
    EXPECT_EQ(client_.range("fc1/1", "Ethernet4/1").status, PM_ERR_INVALID_RANGE);
}

}  // namespace
