// SPDX-License-Identifier: Apache-2.0
// The calls that wait, asked of a switch.
#include "cpp_layer_switch_test.h"

namespace {

using testing::ElementsAre;

class cpp_queries_of_switch : public cpp_layer_switch_test {};

TEST_F(cpp_queries_of_switch, have_the_ports_that_were_asked_for) {
    const std::vector<pm_if_index_range_t> asked{range_of("fc2/2", "fc2/3"), range_of("Ethernet4/8", "Ethernet4/8")};
    EXPECT_THAT(names_in(*port_mgr::get_port_info(handle(), asked)), ElementsAre("fc2/2", "fc2/3", "Ethernet4/8"));
    EXPECT_THAT(names_in(*port_mgr::get_port_info_brief(handle(), asked)),
                ElementsAre("fc2/2", "fc2/3", "Ethernet4/8"));
    EXPECT_THAT(names_in(*port_mgr::get_port_config(handle(), asked)), ElementsAre("fc2/2", "fc2/3", "Ethernet4/8"));
    EXPECT_THAT(names_in(*port_mgr::get_fcot_info(handle(), asked)), ElementsAre("fc2/2", "fc2/3", "Ethernet4/8"));
    EXPECT_THAT(names_in(*port_mgr::get_fcot_info_with_ddm(handle(), asked)),
                ElementsAre("fc2/2", "fc2/3", "Ethernet4/8"));
    EXPECT_THAT(names_in(*port_mgr::get_next_port_info(handle(), index_of("fc2/2"))), ElementsAre("fc2/3"));
    EXPECT_EQ(port_mgr::get_module_interface_listing(handle(), 2, index_of("fc1/1"))->size(), 48u);
}

TEST_F(cpp_queries_of_switch, tell_the_services_status) {
    const auto none = port_mgr::get_port_info_range(handle(), index_of("fc9/1"), index_of("fc9/1"));
    ASSERT_FALSE(none);
    EXPECT_STREQ(none.why().name(), "PM_ERR_INVALID_RANGE");
    EXPECT_EQ(none.why().from(), port_mgr::origin::answer);
}

TEST_F(cpp_queries_of_switch, see_what_a_change_made) {
    const std::vector<pm_if_index_range_t> two{range_of("fc1/1", "fc1/2")};
    const auto made = port_mgr::set_port_config(handle(), two, PM_ATTR_PORT_VSAN, port_mgr::bytes_of(uint16_t{77}),
                                                {.user = "test", .from = "here"});
    EXPECT_TRUE(made.request.ok()) << made.request.words();
    ASSERT_THAT(names_in(made.entries), ElementsAre("fc1/1", "fc1/2"));
    for (const auto &entry : made.entries) EXPECT_TRUE(port_mgr::status_of(entry).ok());
    const auto ports = port_mgr::get_port_info(handle(), two);
    ASSERT_TRUE(ports);
    for (const auto &port : *ports) EXPECT_EQ(port.port_vsan, 77);
}

TEST_F(cpp_queries_of_switch, need_neither_exceptions_nor_type_information) {
    child_process program({BARE_PROGRAM});
    EXPECT_EQ(program.read_rest(child_process::standard_output),
              "get_port_info: 2\n"
              "get_port_info_range: 1\n"
              "get_port_info_brief: 2\n"
              "get_all_port_info_brief: 215\n"
              "get_next_port_info: 1\n"
              "get_port_config: 2\n"
              "get_module_interface_listing: 48\n"
              "get_fcot_info: 2\n"
              "get_fcot_info_with_ddm: 2\n"
              "nothing: no such interface or range (PM_ERR_INVALID_RANGE, 0x4029000a)\n"
              "set_port_config: success, success, success\n"
              "all_ports: 215, 2 changed: success\n"
              "async_requests: sent, one cancelled, 5 under way, 221 ports\n");
    EXPECT_EQ(program.wait(), 0);
}

}  // namespace
